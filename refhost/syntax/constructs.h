// The constructs that tokens begin and end, in one table: by it the token stream keeps blocks
// sound and the parser finds where to go on behind a mistake.
#pragma once

#include <cstdint>
#include <string_view>

namespace refhost {

struct Construct {
  enum class Kind : std::uint8_t { Unit, Variables, Members, Resource, Statement };

  int opener;  // all blocks of variables have VAR
  int closer;
  int headerEnd;  // 0: none
  Kind kind;
  std::string_view closerName;     // END_ and the name of the opener
  std::string_view headerEndName;  // empty: none

  std::string_view openerName() const { return closerName.substr(4); }
  // No statement and no other block of variables can stand in it.
  bool holdsDeclarations() const;
};

// What a token is to the construct that it stands in.
enum class TokenRole : std::uint8_t {
  Other,
  EndOfFile,
  Name,
  Opener,
  Closer,
  HeaderEnd,
  Elsif,
  Else,
  Until,
  Jump,  // a statement of one word
  Semicolon,
  OpenBracket,
  CloseBracket,
  Prefix,  // a sign or NOT
};

TokenRole roleOf(int token);
// Of an opener or a closer; null for every other token.
const Construct* constructOf(int token);
// That END_`name` closes; null for none.
const Construct* constructNamed(std::string_view name);

bool opensUnit(int token);
bool closesUnit(int token);
bool opensVariables(int token);
bool opensStatement(int token);
// The token is part of the block structure or ends a statement.
bool isStructural(int token);
// A type or an initial value can end with the token.
bool endsDeclaration(int token);
// An expression begins or goes on after the token.
bool expectsOperand(int token);
// A statement can begin with the word, which is no name.
bool beginsStatement(std::string_view word);

}  // namespace refhost
