#include "refhost/syntax/constructs.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "grammar.h"
#include "hostkit/folding.h"

namespace refhost {

namespace {

using TokenKind = grammar::Parser::token;
using ConstructKind = Construct::Kind;

constexpr Construct kConstructs[] = {
    {TokenKind::PROGRAM, TokenKind::END_PROGRAM, 0, ConstructKind::Unit, "END_PROGRAM", ""},
    {TokenKind::FUNCTION, TokenKind::END_FUNCTION, 0, ConstructKind::Unit, "END_FUNCTION", ""},
    {TokenKind::FUNCTION_BLOCK, TokenKind::END_FUNCTION_BLOCK, 0, ConstructKind::Unit,
     "END_FUNCTION_BLOCK", ""},
    {TokenKind::TYPE, TokenKind::END_TYPE, 0, ConstructKind::Unit, "END_TYPE", ""},
    {TokenKind::CONFIGURATION, TokenKind::END_CONFIGURATION, 0, ConstructKind::Unit,
     "END_CONFIGURATION", ""},
    {TokenKind::TEST, TokenKind::END_TEST, 0, ConstructKind::Unit, "END_TEST", ""},
    {TokenKind::SETUP, TokenKind::END_SETUP, 0, ConstructKind::Unit, "END_SETUP", ""},
    {TokenKind::TEARDOWN, TokenKind::END_TEARDOWN, 0, ConstructKind::Unit, "END_TEARDOWN", ""},
    {TokenKind::RESOURCE, TokenKind::END_RESOURCE, 0, ConstructKind::Resource, "END_RESOURCE", ""},
    {TokenKind::VAR, TokenKind::END_VAR, 0, ConstructKind::Variables, "END_VAR", ""},
    {TokenKind::STRUCT, TokenKind::END_STRUCT, 0, ConstructKind::Members, "END_STRUCT", ""},
    {TokenKind::IF, TokenKind::END_IF, TokenKind::THEN, ConstructKind::Statement, "END_IF", "THEN"},
    {TokenKind::CASE, TokenKind::END_CASE, TokenKind::OF, ConstructKind::Statement, "END_CASE",
     "OF"},
    {TokenKind::FOR, TokenKind::END_FOR, TokenKind::DO, ConstructKind::Statement, "END_FOR", "DO"},
    {TokenKind::WHILE, TokenKind::END_WHILE, TokenKind::DO, ConstructKind::Statement, "END_WHILE",
     "DO"},
    {TokenKind::REPEAT, TokenKind::END_REPEAT, 0, ConstructKind::Statement, "END_REPEAT", ""},
};

constexpr struct {
  int token;
  std::string_view name;
} kStatementWords[] = {
    {TokenKind::EXIT, "EXIT"}, {TokenKind::CONTINUE, "CONTINUE"}, {TokenKind::RETURN, "RETURN"}};

constexpr struct {
  int token;
  TokenRole role;
} kOthers[] = {
    {TokenKind::YYEOF, TokenRole::EndOfFile},
    {TokenKind::IDENTIFIER, TokenRole::Name},
    {TokenKind::ELSIF, TokenRole::Elsif},
    {TokenKind::ELSE, TokenRole::Else},
    {TokenKind::UNTIL, TokenRole::Until},
    {';', TokenRole::Semicolon},
    {'(', TokenRole::OpenBracket},
    {'[', TokenRole::OpenBracket},
    {')', TokenRole::CloseBracket},
    {']', TokenRole::CloseBracket},
    {TokenKind::NOT, TokenRole::Prefix},
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
  for (int token = TokenKind::VAR; token <= TokenKind::VAR_EXTERNAL; ++token) {
    at(token) = at(TokenKind::VAR);
  }
  at(TokenKind::VAR_CONFIG) = at(TokenKind::VAR);
  return entries;
}

constexpr std::array<Entry, kTokens> kEntries = makeEntries();

const Entry& entryOf(int token) {
  static constexpr Entry kNone;
  const auto index = static_cast<std::size_t>(token);
  return index < kTokens ? kEntries[index] : kNone;
}

bool isOf(int token, TokenRole role, ConstructKind kind) {
  const Entry& entry = entryOf(token);
  return entry.role == role && entry.construct->kind == kind;
}

}  // namespace

bool Construct::isProgramUnit() const {
  return kind == ConstructKind::Unit && opener != TokenKind::TYPE &&
         opener != TokenKind::CONFIGURATION;
}

bool Construct::isTestUnit() const {
  return opener == TokenKind::TEST || opener == TokenKind::SETUP || opener == TokenKind::TEARDOWN;
}

bool Construct::isLoop() const {
  return opener == TokenKind::FOR || opener == TokenKind::WHILE || opener == TokenKind::REPEAT;
}

bool Construct::holdsDeclarations() const {
  return kind == ConstructKind::Variables || kind == ConstructKind::Members ||
         opener == TokenKind::TYPE;
}

TokenRole roleOf(int token) { return entryOf(token).role; }
const Construct* constructOf(int token) { return entryOf(token).construct; }

const Construct* constructNamed(std::string_view name) {
  const auto* const found = std::find_if(
      std::begin(kConstructs), std::end(kConstructs),
      [name](const Construct& row) { return equalIgnoringCase(row.openerName(), name); });
  return found != std::end(kConstructs) ? found : nullptr;
}

void forEachConstruct(const std::function<void(const Construct&)>& visit) {
  for (const Construct& construct : kConstructs) visit(construct);
}

bool opensUnit(int token) { return isOf(token, TokenRole::Opener, ConstructKind::Unit); }
bool closesUnit(int token) { return isOf(token, TokenRole::Closer, ConstructKind::Unit); }
bool opensVariables(int token) { return isOf(token, TokenRole::Opener, ConstructKind::Variables); }

bool isStructural(int token) {
  const TokenRole role = roleOf(token);
  return role >= TokenRole::Opener && role <= TokenRole::Semicolon;
}

bool endsDeclaration(int token) {
  return token == TokenKind::IDENTIFIER || token == TokenKind::INTEGER ||
         token == TokenKind::NUMBER || token == TokenKind::LITERAL || token == TokenKind::STRING ||
         token == TokenKind::WSTRING || roleOf(token) == TokenRole::CloseBracket;
}

bool expectsOperand(int token) {
  const TokenRole role = roleOf(token);
  const bool header = role == TokenRole::Opener && constructOf(token)->headerEnd != 0;
  return header || role == TokenRole::Elsif || role == TokenRole::Until ||
         (!isStructural(token) && !endsDeclaration(token));
}

bool continuesStatement(int token) {
  return token == TokenKind::ASSIGN || token == '(' || token == '[' || token == '.' || token == '^';
}

bool beginsStatement(std::string_view word) {
  const auto isWord = [word](const auto& row) { return row.name == word; };
  if (std::any_of(std::begin(kStatementWords), std::end(kStatementWords), isWord)) return true;
  const auto opens = [word](const Construct& row) {
    return row.kind == ConstructKind::Statement && row.openerName() == word;
  };
  return std::any_of(std::begin(kConstructs), std::end(kConstructs), opens);
}

}  // namespace refhost
