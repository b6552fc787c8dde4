// The tokens of a source text with its comments and pragmas, for queries that do not need a tree.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "refhost/syntax/span.h"

namespace refhost {

struct SourceToken {
  enum class Kind : std::uint8_t {
    Name,     // also of words that are keywords in their context only
    Keyword,  // NOT, AND and the like included
    Number,   // with or without its type, times and dates included
    String,
    Truth,      // TRUE, FALSE
    TypedName,  // `Color#Red`
    Address,    // `%IX0.3`
    Mark,
    Comment,
    Pragma,
    Error,  // not a part of the language
  };

  Kind kind;
  int token;  // of the grammar; 0 for a comment or pragma
  Span span;
};

// In order; they cover all but white space. A comment without an end reaches to the end of the
// text.
std::vector<SourceToken> sourceTokens(std::string_view text);

}  // namespace refhost
