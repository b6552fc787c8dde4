#include "refhost/syntax/constructs.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "grammar.h"
#include "hostkit/folding.h"

namespace refhost {

namespace {

using Token = grammar::Parser::token;
using Kind = Construct::Kind;

constexpr Construct kConstructs[] = {
    {Token::PROGRAM, Token::END_PROGRAM, 0, Kind::Unit, "END_PROGRAM", ""},
    {Token::FUNCTION, Token::END_FUNCTION, 0, Kind::Unit, "END_FUNCTION", ""},
    {Token::FUNCTION_BLOCK, Token::END_FUNCTION_BLOCK, 0, Kind::Unit, "END_FUNCTION_BLOCK", ""},
    {Token::TYPE, Token::END_TYPE, 0, Kind::Unit, "END_TYPE", ""},
    {Token::CONFIGURATION, Token::END_CONFIGURATION, 0, Kind::Unit, "END_CONFIGURATION", ""},
    {Token::TEST, Token::END_TEST, 0, Kind::Unit, "END_TEST", ""},
    {Token::SETUP, Token::END_SETUP, 0, Kind::Unit, "END_SETUP", ""},
    {Token::TEARDOWN, Token::END_TEARDOWN, 0, Kind::Unit, "END_TEARDOWN", ""},
    {Token::RESOURCE, Token::END_RESOURCE, 0, Kind::Resource, "END_RESOURCE", ""},
    {Token::VAR, Token::END_VAR, 0, Kind::Variables, "END_VAR", ""},
    {Token::STRUCT, Token::END_STRUCT, 0, Kind::Members, "END_STRUCT", ""},
    {Token::IF, Token::END_IF, Token::THEN, Kind::Statement, "END_IF", "THEN"},
    {Token::CASE, Token::END_CASE, Token::OF, Kind::Statement, "END_CASE", "OF"},
    {Token::FOR, Token::END_FOR, Token::DO, Kind::Statement, "END_FOR", "DO"},
    {Token::WHILE, Token::END_WHILE, Token::DO, Kind::Statement, "END_WHILE", "DO"},
    {Token::REPEAT, Token::END_REPEAT, 0, Kind::Statement, "END_REPEAT", ""},
};

constexpr struct {
  int token;
  std::string_view name;
} kStatementWords[] = {
    {Token::EXIT, "EXIT"}, {Token::CONTINUE, "CONTINUE"}, {Token::RETURN, "RETURN"}};

constexpr struct {
  int token;
  TokenRole role;
} kOthers[] = {
    {Token::YYEOF, TokenRole::EndOfFile},
    {Token::IDENTIFIER, TokenRole::Name},
    {Token::ELSIF, TokenRole::Elsif},
    {Token::ELSE, TokenRole::Else},
    {Token::UNTIL, TokenRole::Until},
    {';', TokenRole::Semicolon},
    {'(', TokenRole::OpenBracket},
    {'[', TokenRole::OpenBracket},
    {')', TokenRole::CloseBracket},
    {']', TokenRole::CloseBracket},
    {Token::NOT, TokenRole::Prefix},
    {'-', TokenRole::Prefix},
    {'+', TokenRole::Prefix},
};

struct Entry {
  TokenRole role = TokenRole::Other;
  const Construct* construct = nullptr;
};

// Greater than the number of every token.
constexpr std::size_t kTokens = 512;

constexpr std::array<Entry, kTokens> makeEntries() {
  std::array<Entry, kTokens> entries;
  const auto at = [&entries](int token) -> Entry& {
    return entries[static_cast<std::size_t>(token)];
  };
  for (const auto& other : kOthers) at(other.token).role = other.role;
  for (const auto& row : kStatementWords) at(row.token).role = TokenRole::StatementWord;
  for (const Construct& construct : kConstructs) {
    at(construct.opener) = {TokenRole::Opener, &construct};
    at(construct.closer) = {TokenRole::Closer, &construct};
    if (construct.headerEnd != 0) at(construct.headerEnd).role = TokenRole::HeaderEnd;
  }
  for (int token = Token::VAR; token <= Token::VAR_EXTERNAL; ++token) {
    at(token) = at(Token::VAR);
  }
  at(Token::VAR_CONFIG) = at(Token::VAR);
  return entries;
}

constexpr std::array<Entry, kTokens> kEntries = makeEntries();

const Entry& entryOf(int token) {
  static constexpr Entry kNone;
  const auto index = static_cast<std::size_t>(token);
  return index < kTokens ? kEntries[index] : kNone;
}

bool isOf(int token, TokenRole role, Kind kind) {
  const Entry& entry = entryOf(token);
  return entry.role == role && entry.construct->kind == kind;
}

}  // namespace

bool Construct::isProgramUnit() const {
  return kind == Kind::Unit && opener != Token::TYPE && opener != Token::CONFIGURATION;
}

bool Construct::isTestUnit() const {
  return opener == Token::TEST || opener == Token::SETUP || opener == Token::TEARDOWN;
}

bool Construct::isLoop() const {
  return opener == Token::FOR || opener == Token::WHILE || opener == Token::REPEAT;
}

bool Construct::holdsDeclarations() const {
  return kind == Kind::Variables || kind == Kind::Members || opener == Token::TYPE;
}

TokenRole roleOf(int token) { return entryOf(token).role; }
const Construct* constructOf(int token) { return entryOf(token).construct; }

const Construct* constructNamed(std::string_view name) {
  const auto* const found = std::find_if(
      std::begin(kConstructs), std::end(kConstructs),
      [name](const Construct& row) { return equalIgnoringCase(row.openerName(), name); });
  return found != std::end(kConstructs) ? found : nullptr;
}

bool opensUnit(int token) { return isOf(token, TokenRole::Opener, Kind::Unit); }
bool closesUnit(int token) { return isOf(token, TokenRole::Closer, Kind::Unit); }
bool opensVariables(int token) { return isOf(token, TokenRole::Opener, Kind::Variables); }

bool isStructural(int token) {
  const TokenRole role = roleOf(token);
  return role >= TokenRole::Opener && role <= TokenRole::Semicolon;
}

bool endsDeclaration(int token) {
  return token == Token::IDENTIFIER || token == Token::INTEGER || token == Token::NUMBER ||
         token == Token::LITERAL || token == Token::STRING || token == Token::WSTRING ||
         roleOf(token) == TokenRole::CloseBracket;
}

bool expectsOperand(int token) {
  const TokenRole role = roleOf(token);
  const bool header = role == TokenRole::Opener && constructOf(token)->headerEnd != 0;
  return header || role == TokenRole::Elsif || role == TokenRole::Until ||
         (!isStructural(token) && !endsDeclaration(token));
}

bool continuesStatement(int token) {
  return token == Token::ASSIGN || token == '(' || token == '[' || token == '.' || token == '^';
}

bool beginsStatement(std::string_view word) {
  const auto isWord = [word](const auto& row) { return row.name == word; };
  if (std::any_of(std::begin(kStatementWords), std::end(kStatementWords), isWord)) return true;
  const auto opens = [word](const Construct& row) {
    return row.kind == Kind::Statement && row.openerName() == word;
  };
  return std::any_of(std::begin(kConstructs), std::end(kConstructs), opens);
}

}  // namespace refhost
