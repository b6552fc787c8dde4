// Declarations of units found from the tokens alone, for text that the parser cannot take. The
// texts are views of the source.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "refhost/editor/source_tokens.h"

namespace refhost {

struct LexicalVariable {
  std::string_view name;
  std::string_view type;  // as written; empty for none
  int section;            // the token of its block
  bool constant = false;
};

struct LexicalUnit {
  int opener;               // the token with which it begins
  std::string_view name;    // empty for none
  std::uint32_t begin;      // of the opener
  std::string_view result;  // the type of a FUNCTION's result
  std::vector<LexicalVariable> variables;
};

// Those of a text with these tokens, in order.
std::vector<LexicalUnit> lexicalUnits(std::string_view text,
                                      const std::vector<SourceToken>& tokens);

}  // namespace refhost
