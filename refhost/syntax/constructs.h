// The table of constructs with a closing keyword. The token stream uses it to keep blocks balanced
// and to find where the parser can resume after an error.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace refhost {

struct Construct {
  enum class Kind : std::uint8_t { Unit, Variables, Members, Resource, Statement };

  int opener;  // VAR for every block of variables
  int closer;
  int headerEnd;  // THEN, OF or DO; 0 for none
  Kind kind;
  std::string_view closerName;     // END_ and the name of the opener
  std::string_view headerEndName;  // empty for none

  std::string_view openerName() const { return closerName.substr(4); }
  // True of PROGRAM, FUNCTION, FUNCTION_BLOCK and the parts of unit tests.
  bool isProgramUnit() const;
  // True of TEST, SETUP and TEARDOWN.
  bool isTestUnit() const;
  // True of FOR, WHILE and REPEAT.
  bool isLoop() const;
  // True if it contains neither statements nor blocks of variables.
  bool holdsDeclarations() const;
};

// The role of a token in the block structure.
enum class TokenRole : std::uint8_t {
  Other,
  EndOfFile,
  Name,
  // Structural tokens: isStructural() asks for this range.
  Opener,
  Closer,
  HeaderEnd,
  Elsif,
  Else,
  Until,
  Semicolon,
  StatementWord,  // begins a statement without a block: EXIT, CONTINUE, RETURN
  OpenBracket,
  CloseBracket,
  Prefix,  // a sign or NOT
};

TokenRole roleOf(int token);
// Null for a token that is neither an opener nor a closer.
const Construct* constructOf(int token);
// The construct that END_`name` closes; null for none.
const Construct* constructNamed(std::string_view name);

void forEachConstruct(const std::function<void(const Construct&)>& visit);

bool opensUnit(int token);
bool closesUnit(int token);
bool opensVariables(int token);
// True for a token of the block structure, or a ';'.
bool isStructural(int token);
// True if a type or an initial value can end with the token.
bool endsDeclaration(int token);
// True if an operand must follow the token.
bool expectsOperand(int token);
// True of a token behind the name with which a statement begins.
bool continuesStatement(int token);
// True if `word` is a keyword that begins a statement.
bool beginsStatement(std::string_view word);

}  // namespace refhost
