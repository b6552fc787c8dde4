// The meaning of each word of a file, for highlighting.
#pragma once

#include <cstdint>
#include <vector>

#include "refhost/editor/program_view.h"

namespace refhost {

struct SemanticToken {
  enum class Kind : std::uint8_t {
    Keyword,
    Type,      // declared or elementary
    Function,  // of the program, of the standard, or an operator that is called like one
    Block,     // a function block, a PROGRAM or another unit
    Variable,
    Parameter,
    Member,
    Value,     // of an enumeration
    Constant,  // TRUE and FALSE
    Number,
    String,
    Comment,  // and pragmas
    Operator,
  };
  // Modifiers.
  static constexpr unsigned kDeclaration = 1;
  static constexpr unsigned kReadonly = 2;
  static constexpr unsigned kDefaultLibrary = 4;  // of the language, not of the program

  SourceRange range;  // within one line
  Kind kind;
  unsigned modifiers = 0;
};

// In order, without overlaps. A comment of several lines is one token in each. Names that are not
// known have none.
std::vector<SemanticToken> semanticTokensOf(const ProgramView& view, std::uint32_t file);

}  // namespace refhost
