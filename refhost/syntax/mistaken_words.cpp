// Words that cannot be what they are: keywords as names, and closers that are not written as one
// word.
#include <cstdint>
#include <string_view>

#include "grammar.h"
#include "hostkit/folding.h"
#include "refhost/messages.h"
#include "refhost/syntax/blocks.h"
#include "refhost/syntax/syntax_errors.h"
#include "refhost/syntax/token_stream.h"

namespace refhost {

namespace {

using Kind = grammar::Parser::token;

// A declaration or a value of an enumeration begins after the token.
bool beginsName(int kind) {
  return isStructural(kind) || kind == ',' || kind == '(' ||
         (kind >= Kind::CONSTANT && kind <= Kind::PERSISTENT);
}

// An expression begins or goes on after the token.
bool expectsOperand(int kind) {
  switch (kind) {
    case Kind::IF:
    case Kind::ELSIF:
    case Kind::CASE:
    case Kind::FOR:
    case Kind::TO:
    case Kind::BY:
    case Kind::WHILE:
    case Kind::UNTIL:
      return true;
    default:
      return !isStructural(kind) && !endsDeclaration(kind);
  }
}

}  // namespace

// A keyword of statements that is declared as a variable is reported there, and is a name
// wherever no statement can begin or go on with it.
void TokenStream::takeKeyword(Token& token) {
  const std::uint32_t bit = std::uint32_t{1} << (token.kind - Kind::IF);
  if (inUnit() && inDeclarations()) {
    const int next = ahead(1).kind;
    const bool declared = next == ':' || next == ',' || next == ')' || next == Kind::AT;
    if (!declared || !beginsName(previous_)) return;
    errors_.add(token.span, message::kKeywordName, textOf(token));
    keywordNames_ |= bit;
    token.kind = Kind::IDENTIFIER;
  } else if ((keywordNames_ & bit) != 0) {
    const int next = ahead(1).kind;
    const bool target = next == Kind::ASSIGN || next == '.' || next == '[' || next == '^';
    if (target || expectsOperand(previous_)) token.kind = Kind::IDENTIFIER;
  }
}

// `END IF` and `ENDIF` are meant to be END_IF; a union ends as what it is taken for.
void TokenStream::joinEnd(Token& token) {
  if (token.kind != Kind::IDENTIFIER || !equalIgnoringCase(textOf(token).substr(0, 3), "END"))
    return;
  const std::string_view word = textOf(token);
  if (equalIgnoringCase(word, "END_UNION") && isOpen(Kind::STRUCT)) {
    token.kind = Kind::END_STRUCT;
    return;
  }
  const bool apart = word.size() == 3;
  const int next = ahead(1).kind;
  const int after = opensVariables(next) ? int{Kind::VAR} : next;
  const int opener = apart ? after : openerOf(word.substr(3));
  const bool isName =
      next == Kind::ASSIGN || next == ':' || next == ',' || expectsOperand(previous_);
  if ((isName && !apart) || !isOpen(opener)) return;
  const BlockRule& rule = ruleOf(opener);
  errors_.unexpected(token.span, rule.closerName);
  if (apart) scan(token);
  token.kind = rule.closer;
}

}  // namespace refhost
