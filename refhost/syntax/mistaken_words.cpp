#include "refhost/syntax/mistaken_words.h"

#include <string_view>

#include "grammar.h"
#include "hostkit/folding.h"
#include "refhost/messages.h"
#include "refhost/syntax/syntax_errors.h"

namespace refhost {

namespace {

using TokenKind = grammar::Parser::token;

// True if a declaration or a value of an enumeration can begin after the token.
bool beginsName(int kind) {
  return isStructural(kind) || kind == ',' || kind == '(' ||
         (kind >= TokenKind::CONSTANT && kind <= TokenKind::PERSISTENT);
}

}  // namespace

// A keyword of a statement that is declared as a variable is reported at the declaration. After
// that it is a name wherever it cannot be the keyword.
void MistakenWords::correctKeyword(Token& token, int previous) {
  static_assert(TokenKind::RETURN - TokenKind::IF < 32, "keywordNames_ has a bit for each");
  const std::uint32_t bit = std::uint32_t{1} << (token.kind - TokenKind::IF);
  if (blocks_.inDeclarations()) {
    const int next = queue_.ahead().kind;
    const bool declared = next == ':' || next == ',' || next == ')' || next == TokenKind::AT;
    if (!declared || !beginsName(previous)) return;
    errors_.add(token.span, message::kKeywordName, queue_.textOf(token));
    keywordNames_ |= bit;
    token.kind = TokenKind::IDENTIFIER;
  } else if ((keywordNames_ & bit) != 0) {
    const int next = queue_.ahead().kind;
    const bool target = next == TokenKind::ASSIGN || next == '.' || next == '[' || next == '^';
    if (target || expectsOperand(previous)) token.kind = TokenKind::IDENTIFIER;
  }
}

// Takes `END IF` and `ENDIF` for END_IF, and END_UNION for END_STRUCT, since Unsupported replaces
// UNION by STRUCT.
void MistakenWords::joinEnd(Token& token, int previous) {
  const std::string_view word = queue_.textOf(token);
  if (token.kind != TokenKind::IDENTIFIER || !equalIgnoringCase(word.substr(0, 3), "END")) return;
  if (equalIgnoringCase(word, "END_UNION") && blocks_.isOpen(constructOf(TokenKind::STRUCT))) {
    token.kind = TokenKind::END_STRUCT;
    return;
  }
  const bool apart = word.size() == 3;
  const int next = queue_.ahead().kind;
  const Construct* opened = roleOf(next) == TokenRole::Opener ? constructOf(next) : nullptr;
  if (next == TokenKind::IDENTIFIER) opened = constructNamed(queue_.textOf(queue_.ahead()));
  const Construct* const meant = apart ? opened : constructNamed(word.substr(3));
  const bool isName =
      next == TokenKind::ASSIGN || next == ':' || next == ',' || expectsOperand(previous);
  if ((isName && !apart) || meant == nullptr || !blocks_.isOpen(meant)) return;
  Remarks* const said = errors_.unexpected(token.span, meant->closerName);
  const Span words{token.span.begin, apart ? queue_.ahead().span.end : token.span.end};
  if (said != nullptr) errors_.propose(*said, words, meant->closerName);
  if (apart) token = queue_.take();
  token.kind = meant->closer;
}

}  // namespace refhost
