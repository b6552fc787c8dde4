#include "refhost/syntax/unsupported.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string>

#include "grammar.h"
#include "hostkit/folding.h"
#include "hostkit/literal.h"
#include "refhost/messages.h"
#include "refhost/syntax/expected_tokens.h"
#include "refhost/syntax/syntax_errors.h"

namespace refhost {

struct Unsupported::Construct {
  enum class Extent : std::uint8_t {
    Word,
    Names,      // the word and the names, dots and commas after it
    Statement,  // up to the next ';' or the word `closer`
    Closer,     // up to the word `closer`
    Unit,       // up to the end of the unit
  };

  std::string_view opener;
  Extent extent;
  std::string_view closer;
  const MessageFormat* format;  // null: skipped without a message
  const char* what;
};

namespace {

using TokenKind = grammar::Parser::token;

constexpr const MessageFormat* kRefused = &message::kNotSupported;
constexpr const char* kChart = "Sequential function charts (SFC) are";
constexpr const char* kInstructions = "Instruction lists (IL) are";
constexpr const char* kMocks = "Mocks (MOCK, STUB) are";
constexpr const char* kModifiers = "Modifiers of units and variables are";

constexpr std::string_view kTypes[] = {"CHAR",         "WCHAR", "LDATE",         "LTOD",
                                       "LTIME_OF_DAY", "LDT",   "LDATE_AND_TIME"};

// True if a statement, a declaration or a part of a header can begin after the token.
bool endsConstruct(int kind) {
  return kind == 0 || kind == TokenKind::IDENTIFIER || isStructural(kind) || opensUnit(kind);
}

// True for a token that cannot follow a name, so that the word before it is no name.
bool cannotFollowName(int kind) {
  return kind == TokenKind::IDENTIFIER || kind == TokenKind::INTEGER || kind == TokenKind::NUMBER ||
         kind == TokenKind::LITERAL || kind == TokenKind::DIRECT_ADDRESS;
}

bool isString(std::string_view text) {
  return !text.empty() && (text.front() == '\'' || text.front() == '"');
}

}  // namespace

bool isUnsupportedType(std::string_view name) {
  return std::any_of(std::begin(kTypes), std::end(kTypes),
                     [name](std::string_view type) { return equalIgnoringCase(type, name); });
}

const Unsupported::Construct* Unsupported::constructOf(std::string_view word) {
  using Extent = Construct::Extent;
  static constexpr Construct kConstructs[] = {
      {"CLASS", Extent::Closer, "END_CLASS", kRefused, "Classes (CLASS) are"},
      {"INTERFACE", Extent::Closer, "END_INTERFACE", kRefused, "Interfaces (INTERFACE) are"},
      {"METHOD", Extent::Closer, "END_METHOD", kRefused, "Methods (METHOD) are"},
      {"PROPERTY", Extent::Closer, "END_PROPERTY", kRefused, "Properties (PROPERTY) are"},
      {"ACTION", Extent::Closer, "END_ACTION", kRefused, "Actions (ACTION) are"},
      {"NAMESPACE", Extent::Names, "", kRefused, "Namespaces (NAMESPACE) are"},
      {"END_NAMESPACE", Extent::Word, "", nullptr, ""},
      {"USING", Extent::Names, "", kRefused, "Namespaces (USING) are"},
      {"EXTENDS", Extent::Names, "", kRefused, "Derived units (EXTENDS) are"},
      {"IMPLEMENTS", Extent::Names, "", kRefused, "Interfaces (IMPLEMENTS) are"},
      {"ABSTRACT", Extent::Word, "", kRefused, kModifiers},
      {"FINAL", Extent::Word, "", kRefused, kModifiers},
      {"PUBLIC", Extent::Word, "", kRefused, kModifiers},
      {"PROTECTED", Extent::Word, "", kRefused, kModifiers},
      {"PRIVATE", Extent::Word, "", kRefused, kModifiers},
      {"INTERNAL", Extent::Word, "", kRefused, kModifiers},
      {"INITIAL_STEP", Extent::Unit, "", kRefused, kChart},
      {"STEP", Extent::Unit, "", kRefused, kChart},
      {"TRANSITION", Extent::Unit, "", kRefused, kChart},
      {"LD", Extent::Unit, "", kRefused, kInstructions},
      {"LDN", Extent::Unit, "", kRefused, kInstructions},
      {"CAL", Extent::Unit, "", kRefused, kInstructions},
      {"OVERLAP", Extent::Word, "", kRefused, "Overlapping members (OVERLAP) are"},
      {"JMP", Extent::Names, "", kRefused, "Jumps (JMP) are"},
      {"MOCK", Extent::Statement, "END_MOCK", kRefused, kMocks},
      {"MOCK_FUNCTION", Extent::Statement, "END_MOCK", kRefused, kMocks},
      {"STUB", Extent::Statement, "END_STUB", kRefused, kMocks},
      {"END_MOCK", Extent::Word, "", nullptr, ""},
      {"END_STUB", Extent::Word, "", nullptr, ""},
      // Access paths do not concern the translation.
      {"VAR_ACCESS", Extent::Closer, "END_VAR", nullptr, ""},
  };
  // Most names differ from all of these in their first letter or their length.
  static constexpr auto kLengths = [] {
    std::array<std::uint32_t, 32> lengths{};
    for (const Construct& row : kConstructs) lengths[row.opener[0] & 31] |= 1U << row.opener.size();
    return lengths;
  }();
  if ((kLengths[word[0] & 31] >> std::min<std::size_t>(word.size(), 31) & 1U) == 0) return nullptr;
  const auto* const found =
      std::find_if(std::begin(kConstructs), std::end(kConstructs),
                   [word](const Construct& row) { return equalIgnoringCase(row.opener, word); });
  return found != std::end(kConstructs) ? found : nullptr;
}

// The unsupported construct that begins at `token`; null for none.
const Unsupported::Construct* Unsupported::constructAt(const Token& token, int previous) {
  if (token.kind != TokenKind::IDENTIFIER || !endsConstruct(previous)) return nullptr;
  const Construct* const construct = constructOf(queue_.textOf(token));
  if (construct == nullptr) return nullptr;
  const int next = queue_.ahead().kind;
  const bool bare =
      construct->format == nullptr && (next == TokenKind::YYEOF || isStructural(next));
  return bare || cannotFollowName(next) ? construct : nullptr;
}

void Unsupported::replace(Token& token, int previous) {
  while (const Construct* const construct = constructAt(token, previous)) {
    if (construct->format != nullptr) errors_.add(token.span, *construct->format, construct->what);
    if (blocks_.any()) {
      errors_.refusePart();
    } else if (queue_.ahead().kind == TokenKind::IDENTIFIER) {
      errors_.refuseUnit(queue_.textOf(queue_.ahead()));
    }
    skip(token, *construct);
  }
  if (previous == ':' || previous == TokenKind::OF) replaceType(token);
}

void Unsupported::replaceBlock(Token& token, int previous) {
  constexpr std::string_view kPrefix = "VAR_";
  if (token.kind != TokenKind::IDENTIFIER || !blocks_.any() || !endsConstruct(previous)) return;
  const std::string_view word = queue_.textOf(token);
  if (!equalIgnoringCase(word.substr(0, kPrefix.size()), kPrefix)) return;
  const int behind = queue_.ahead(2).kind;
  if (queue_.ahead().kind != TokenKind::IDENTIFIER || (behind != ':' && behind != ',')) return;
  errors_.add(token.span, message::kNotSupported, std::string(word) + " blocks are");
  token.kind = TokenKind::VAR;
}

// A UNION becomes a STRUCT, so that the uses of its members are checked too.
void Unsupported::replaceType(Token& token) {
  if (token.kind != TokenKind::IDENTIFIER) return;
  if (equalIgnoringCase(queue_.textOf(token), "UNION") &&
      queue_.ahead().kind == TokenKind::IDENTIFIER) {
    errors_.add(token.span, *kRefused, "Unions (UNION) are");
    token.kind = TokenKind::STRUCT;
  }
}

// True for `name: statement`, false for a declaration among the statements.
bool Unsupported::beginsLabel(Span name) {
  if (name.begin == name.end || queue_.isPrecededBy(name, '.')) return false;
  const int next = queue_.ahead().kind;
  if (next == TokenKind::IDENTIFIER) {
    return queue_.ahead(2).kind != ';' && !namesLiteralType(queue_.textOf(queue_.ahead()));
  }
  return roleOf(next) == TokenRole::StatementWord ||
         (isStructural(next) && next != TokenKind::STRUCT);
}

bool Unsupported::refuse(Span found, const ExpectedTokens& expected) {
  const std::string_view text = queue_.textOf(found);
  const Span before = queue_.wordBefore(found.begin);
  const bool assigns = queue_.isFollowedBy(found, '=');
  const bool declares = blocks_.inDeclarations();
  const bool inUntil = blocks_.any() && blocks_.top().hasUntil;
  const char* what = nullptr;
  if (text == ":=" && expected.has("';'") && expected.has("'*'") && !inUntil) {
    what = "Chained assignments are";
  } else if (assigns && expected.has("':='") &&
             (equalIgnoringCase(text, "S") || equalIgnoringCase(text, "R"))) {
    what = "Set and reset assignments (S=, R=) are";
  } else if (isString(text) && queue_.isPrecededBy(found, text.front())) {
    what = "Doubled quotes in strings ($' is a quote) are";
  } else if (equalIgnoringCase(text, "AT") && declares &&
             blocks_.isIn(refhost::Construct::Kind::Members)) {
    what = "Addresses of members (AT) are";
  } else if (text == "(" && equalIgnoringCase(queue_.textOf(before), "RETURN")) {
    what = "RETURN with a value is";
  } else if (text == ":" && !declares && expected.has("':='") && beginsLabel(before)) {
    found = before;
    what = "Labels are";
    // The labelled statement is parsed as a statement of its own.
    queue_.putBack({';', {found.end, found.end}});
  }
  if (what != nullptr) errors_.notSupported(found, what);
  return what != nullptr;
}

void Unsupported::skip(Token& token, const Construct& construct) {
  const auto endsUnit = [&token] {
    return token.kind == TokenKind::YYEOF || opensUnit(token.kind) || closesUnit(token.kind);
  };
  const auto isName = [&token] {
    return token.kind == TokenKind::IDENTIFIER || token.kind == '.' || token.kind == ',';
  };
  const auto isCloser = [&] { return equalIgnoringCase(queue_.textOf(token), construct.closer); };
  token = queue_.take();
  switch (construct.extent) {
    case Construct::Extent::Word:
      break;
    case Construct::Extent::Names:
      while (isName() && constructOf(queue_.textOf(token)) == nullptr) token = queue_.take();
      break;
    case Construct::Extent::Statement:
      while (token.kind != TokenKind::YYEOF && !isStructural(token.kind) && !isCloser())
        token = queue_.take();
      break;
    case Construct::Extent::Unit:
      while (!endsUnit()) token = queue_.take();
      break;
    case Construct::Extent::Closer:
      while (!endsUnit() && !isCloser()) token = queue_.take();
      if (endsUnit()) {
        errors_.unexpected(token.span, construct.closer);
      } else {
        token = queue_.take();
      }
      break;
  }
}

}  // namespace refhost
