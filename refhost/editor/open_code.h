// What is open in front of a place in a source: blocks, a statement, brackets. It is found from the
// tokens alone, so that errors in the text do not matter.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "refhost/editor/source_tokens.h"
#include "refhost/syntax/constructs.h"

namespace refhost {

// Tokens are indexes into OpenCode::tokens.
struct CodeBlock {
  const Construct* construct;
  std::size_t token;     // the keyword with which it begins
  bool inHeader;         // THEN, OF or DO is missing
  bool hasElse = false;  // of an IF or a CASE
  bool hasUntil = false;
};

struct CodeBracket {
  std::size_t token;
  std::size_t argument;  // the first token behind it or behind the last ',' in it
  std::uint32_t commas = 0;
};

struct OpenCode {
  bool isIn(Construct::Kind kind) const {
    return !blocks.empty() && blocks.back().construct->kind == kind;
  }
  bool isIn(int opener) const {
    return !blocks.empty() && blocks.back().construct->opener == opener;
  }
  // True if the outermost block is one of these.
  bool isWithin(int opener) const {
    return !blocks.empty() && blocks.front().construct->opener == opener;
  }
  bool isInTest() const { return !blocks.empty() && blocks.front().construct->isTestUnit(); }
  // The kind of the token `back` places before the end; 0 for none.
  int kindBefore(std::size_t back = 1) const {
    return tokens.size() >= back ? tokens[tokens.size() - back].token : 0;
  }
  std::string_view textOf(std::size_t token) const {
    return text.substr(tokens[token].span.begin, tokens[token].span.end - tokens[token].span.begin);
  }

  std::string_view text;
  // All in front of the place but comments and pragmas. Words that are keywords in their place only
  // have the number of the keyword.
  std::vector<SourceToken> tokens;
  std::vector<CodeBlock> blocks;      // from the outermost to the innermost
  std::vector<CodeBracket> brackets;  // of the statement
  std::size_t statement = 0;          // the first token of the statement or declaration
  std::size_t header = 0;             // the first token behind the header of the unit
  bool inUnitHeader = false;          // its name or type is not complete
};

// `tokens` are those of the text; those that end behind `offset` are left out.
OpenCode openCodeAt(std::string_view text, const std::vector<SourceToken>& tokens,
                    std::uint32_t offset);

// True if an operand can end with the token, so that none can follow it.
bool endsOperand(const SourceToken& token);

}  // namespace refhost
