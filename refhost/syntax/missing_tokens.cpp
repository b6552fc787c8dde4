// Tokens that the program has forgotten in front of another one.
#include <algorithm>
#include <cstddef>

#include "grammar.h"
#include "hostkit/folding.h"
#include "refhost/syntax/expected_tokens.h"
#include "refhost/syntax/syntax_errors.h"
#include "refhost/syntax/token_stream.h"

namespace refhost {

namespace {

using TokenKind = grammar::Parser::token;

// True unless there must be a condition, a selector or a bound behind the token.
bool endsHeader(int token) {
  return roleOf(token) != TokenRole::Opener && roleOf(token) != TokenRole::Elsif;
}

}  // namespace

int TokenStream::missingBefore(const Token& token) {
  resumes_ = false;
  if (!blocks_.any()) return 0;
  switch (roleOf(token.kind)) {
    case TokenRole::EndOfFile:
      return closeTop(token);
    case TokenRole::Name:
      if (isPlainTarget(token)) return 0;
      if (blocks_.count() == 1 && (isStructural(last_.kind) || endsDeclaration(last_.kind))) {
        if (const int missing = missingBeforeSection(token); missing != 0) return missing;
      }
      if (const int missing = missingBeforeLabel(token); missing != 0) return missing;
      if (inHeader_ && last_.kind == TokenKind::IDENTIFIER) return missingBeforeType(token);
      return blocks_.inDeclarations() ? missingBeforeName(token) : 0;
    case TokenRole::Opener:
      return missingBeforeOpener(token);
    case TokenRole::Closer:
      return missingBeforeCloser(token);
    case TokenRole::StatementWord:
    case TokenRole::Semicolon:
      return missingHeaderEnd(token);
    case TokenRole::Else:
      return missingBeforeElse(token);
    case TokenRole::Elsif:
      return closeUntil(constructOf(TokenKind::IF), token);
    case TokenRole::Until:
      return closeUntil(constructOf(TokenKind::REPEAT), token);
    case TokenRole::Other:
    case TokenRole::Prefix:
      return token.kind == '-' || endsDeclaration(token.kind) ? missingBeforeLabel(token) : 0;
    default:
      return 0;
  }
}

// True of the name with which a statement, and neither a declaration nor a label, begins.
bool TokenStream::isPlainTarget(const Token& token) const {
  if (inHeader_ || blocks_.inDeclarations()) return false;
  const std::string_view behind = queue_.behind(token.span);
  return behind.substr(0, 2) == ":=" || TokenQueue::isBracket(behind);
}

int TokenStream::missingBeforeOpener(const Token& token) {
  const bool declares = blocks_.inDeclarations();
  switch (constructOf(token.kind)->kind) {
    case Construct::Kind::Unit: {
      const bool instance = token.kind == TokenKind::PROGRAM && inConfiguration() && !declares;
      return instance && beginsInstance() ? 0 : closeTop(token);
    }
    case Construct::Kind::Resource:
      return blocks_.count() > 1 ? closeTop(token) : 0;
    case Construct::Kind::Variables:
      return declares ? closeTop(token) : 0;
    case Construct::Kind::Statement:
      return declares ? closeTop(token) : missingHeaderEnd(token);
    case Construct::Kind::Members:
      break;
  }
  return 0;
}

// The closer of any unit closes the open unit, even one of another kind.
int TokenStream::missingBeforeCloser(const Token& token) {
  const Construct* const construct = constructOf(token.kind);
  if (construct->kind != Construct::Kind::Unit) return closeUntil(construct, token);
  return blocks_.count() > 1 || !blocks_.isTop(construct) ? closeTop(token) : 0;
}

void TokenStream::correctCloser(Token& token) {
  const Construct* const construct = constructOf(token.kind);
  if (construct->kind != Construct::Kind::Statement || blocks_.isTop(construct)) return;
  if (!blocks_.isIn(Construct::Kind::Statement) || construct == crossed_) return;
  const Construct& due = *blocks_.top().construct;
  if (due.opener == TokenKind::REPEAT && !blocks_.top().hasUntil) return;
  if (!isStray(construct) || isStray(&due)) return;
  Remarks* const said = errors_.unexpected(token.span, due.closerName);
  if (said != nullptr) {
    noteOpener(*said);
    said->fix(errors_.rangeOf(token.span), std::string(due.closerName));
  }
  token.kind = due.closer;
}

// True if the rest of the unit closes all open blocks of `construct` without the current token.
bool TokenStream::isStray(const Construct* construct) {
  std::ptrdiff_t open =
      std::count_if(blocks_.begin(), blocks_.end(),
                    [construct](const OpenBlock& block) { return block.construct == construct; });
  for (std::size_t distance = 1; open > 0; ++distance) {
    const int kind = queue_.ahead(distance).kind;
    if (kind == TokenKind::YYEOF || opensUnit(kind) || closesUnit(kind)) return false;
    if (constructOf(kind) == construct) open += kind == construct->opener ? 1 : -1;
  }
  return true;
}

int TokenStream::missingBeforeElse(const Token& token) {
  const Construct* const branch = constructOf(TokenKind::IF);
  const Construct* const choice = constructOf(TokenKind::CASE);
  const bool isIn = blocks_.isTop(branch) || blocks_.isTop(choice);
  const int missing = missingHeaderEnd(token);
  if (missing != 0 || isIn) return missing;
  return blocks_.isOpen(branch) || blocks_.isOpen(choice) ? closeTop(token) : 0;
}

// Before the label of a CASE all statements of the branch before must be closed.
int TokenStream::missingBeforeLabel(const Token& token) {
  if (last_.kind != ';' && roleOf(last_.kind) != TokenRole::Closer) return 0;
  const Construct* const choice = constructOf(TokenKind::CASE);
  if (!blocks_.isIn(Construct::Kind::Statement) || blocks_.isTop(choice)) return 0;
  if (!blocks_.isOpen(choice)) return 0;
  const bool sign = token.kind == '-';
  const int first = sign ? queue_.ahead().kind : token.kind;
  const bool qualified = first == TokenKind::IDENTIFIER && queue_.ahead().kind == '.';
  const int next = queue_.ahead(qualified ? 3 : sign ? 2 : 1).kind;
  const bool value = first == TokenKind::INTEGER || first == TokenKind::NUMBER ||
                     first == TokenKind::LITERAL || first == TokenKind::IDENTIFIER;
  const bool label = next == ':' || next == ',' || next == TokenKind::RANGE;
  return value && label ? closeTop(token) : 0;
}

// The opener of a block of variables, of which there is only the end.
int TokenStream::missingBeforeSection(const Token& token) {
  const int next = queue_.ahead().kind;
  if ((next != ':' && next != ',') || !blocks_.inProgramUnit() || opensUnit(last_.kind)) return 0;
  if (!closesVariables()) return 0;
  errors_.unexpected(token.span, "VAR");
  errors_.refusePart();
  openBlock({TokenKind::VAR, {token.span.begin, token.span.begin}});
  resumes_ = false;
  return TokenKind::VAR;
}

// True if an END_VAR follows, and no opener of a block before it.
bool TokenStream::closesVariables() {
  for (std::size_t distance = 1;; ++distance) {
    const int kind = queue_.ahead(distance).kind;
    if (kind == TokenKind::END_VAR) return true;
    const TokenRole role = roleOf(kind);
    const bool structure = kind == TokenKind::STRUCT || kind == TokenKind::END_STRUCT;
    if (kind == TokenKind::YYEOF || (role == TokenRole::Opener && !structure)) return false;
    if (role == TokenRole::Closer && !structure) return false;
  }
}

// A ';' is missing if the name begins another declaration, END_VAR if it begins a statement.
int TokenStream::missingBeforeName(const Token& token) {
  const bool afterDeclaration = last_.kind == ';' || opensVariables(last_.kind);
  if (!afterDeclaration && !endsDeclaration(last_.kind)) return 0;
  const int next = queue_.ahead().kind;
  if (!afterDeclaration) {
    const bool declares = next == ':' || next == ',' || next == TokenKind::AT;
    if (!declares || brackets_ > 0) return 0;
    errors_.refusePart();
    const bool known = recovery_ != Recovery::None || std::exchange(amidst_, false);
    // Behind a name without a type there are more names.
    const bool names =
        last_.kind == TokenKind::IDENTIFIER &&
        (beforeLast_ == ',' || beforeLast_ == ';' || roleOf(beforeLast_) == TokenRole::Opener);
    if (!known) {
      addMissing(errors_.unexpected(token.span, "';'"), names ? "," : ";", token.span);
    }
    errors_.muteDeclaration(token.span.end);
    return ';';
  }
  if (!blocks_.isIn(Construct::Kind::Variables)) return 0;
  // Before a value there may be no type.
  if (next == TokenKind::ASSIGN && closesVariables()) return 0;
  return continuesStatement(next) && !blocks_.top().hasPaths ? closeTop(token) : 0;
}

// A ':' is missing between the name of a FUNCTION and its type, unless a statement begins here.
int TokenStream::missingBeforeType(const Token& token) {
  const Span opener = queue_.wordBefore(queue_.wordBefore(token.span.begin).begin);
  const int next = queue_.ahead().kind;
  if (!equalIgnoringCase(queue_.textOf(opener), "FUNCTION")) return 0;
  if (next != TokenKind::IDENTIFIER && !isStructural(next)) return 0;
  addMissing(errors_.unexpected(token.span, "':'"), ":", token.span);
  return ':';
}

int TokenStream::missingHeaderEnd(const Token& token) {
  OpenBlock& top = blocks_.top();
  if (!top.inHeader) return 0;
  // After an error in the header this would be a consequence of it.
  if (!errors_.reportedSince(top.begin)) {
    Remarks* const said = errors_.unexpected(token.span, top.construct->headerEndName);
    const bool whole = top.construct->opener != TokenKind::FOR || top.hasTo;
    if (whole && endsHeader(last_.kind)) addMissing(said, top.construct->headerEndName, token.span);
  }
  top.inHeader = false;
  top.doubtful = true;
  brackets_ = 0;
  return top.construct->headerEnd;
}

// Before the END_REPEAT there must be an UNTIL, and a ';' after its condition.
int TokenStream::missingBeforeEnd(const Token& token) {
  OpenBlock& top = blocks_.top();
  if (top.construct->opener != TokenKind::REPEAT) return missingHeaderEnd(token);
  if (top.hasUntil) return 0;
  Remarks* const said = errors_.unexpected(token.span, "UNTIL");
  if (said != nullptr && token.kind != TokenKind::END_REPEAT) noteOpener(*said);
  top.hasUntil = true;
  resumes_ = true;
  return TokenKind::UNTIL;
}

int TokenStream::closeTop(const Token& token) {
  if (const int missing = missingBeforeEnd(token); missing != 0) return missing;
  const Construct& construct = *blocks_.top().construct;
  resumes_ = true;
  if (construct.kind != Construct::Kind::Statement) noteBroken();
  if (!blocks_.top().doubtful) {
    Remarks* const said = errors_.unexpected(token.span, construct.closerName);
    if (said != nullptr) noteOpener(*said);
    const bool wrong = closesUnit(token.kind) && construct.kind == Construct::Kind::Unit;
    if (said != nullptr && wrong) {
      said->fix(errors_.rangeOf(token.span), std::string(construct.closerName));
    } else if (said != nullptr) {
      errors_.insert(*said, construct.closerName,
                     closerInsertion(queue_.textFrom(0), construct, blocks_.top().opener,
                                     endBefore(token.span), token.span.begin));
    }
  }
  if (roleOf(token.kind) == TokenRole::Closer && !closesUnit(token.kind)) crossed_ = &construct;
  blocks_.close();
  return construct.closer;
}

void TokenStream::noteOpener(Remarks& said) const {
  const Span opener = blocks_.top().opener;
  said.note(errors_.rangeOf(opener), "the " + std::string(queue_.textOf(opener)) + " stands here");
}

// The end of the last token of the source before `token`, which is to be delivered or was the last.
std::uint32_t TokenStream::endBefore(Span token) const {
  return last_.span.begin == token.begin ? lastEnd_ : last_.span.end;
}

// Adds to the message on `found`, null if there is none, that the token is missing before it.
void TokenStream::addMissing(Remarks* said, std::string_view token, Span found) const {
  const std::uint32_t end = endBefore(found);
  if (said == nullptr || end > found.begin) return;
  const bool word = isLetter(token.front()) || token.front() == ':';
  std::string text = (word ? " " : "") + std::string(token);
  if (word && end == found.begin) text += ' ';
  errors_.insert(*said, token, {end, std::move(text)});
}

// True if a header of a statement has not ended, and the tokens before the next ';' do not end it.
bool TokenStream::isHeaderOpen(int end) {
  const bool open = blocks_.any() && blocks_.top().inHeader;
  if (!open || blocks_.top().construct->headerEnd != end) return false;
  std::size_t distance = 1;
  while (!isStructural(queue_.ahead(distance).kind)) {
    if (queue_.ahead(distance).kind == TokenKind::YYEOF) return true;
    ++distance;
  }
  return queue_.ahead(distance).kind != end;
}

// True if a label of a CASE seems to begin with the number delivered last.
bool TokenStream::beginsLabel(Span found) {
  const int next = queue_.ahead().kind;
  if (next == ':') return true;
  return (next == ',' || next == TokenKind::RANGE) && !isInLineOfLast(found);
}

// True if `found`, the token delivered last, stands in the line in which the one before it ends.
bool TokenStream::isInLineOfLast(Span found) const {
  const std::uint32_t end = endBefore(found);
  const std::string_view between = queue_.textFrom(0).substr(end, found.begin - end);
  return between.find('\n') == std::string_view::npos;
}

// True if a declaration or a statement seems to begin with the token delivered last.
bool TokenStream::beginsAnew(Span found) {
  if (isStructural(last_.kind)) return last_.kind != ';';
  const bool number = last_.kind == TokenKind::INTEGER || last_.kind == TokenKind::NUMBER ||
                      last_.kind == TokenKind::LITERAL;
  if (number && blocks_.isTop(constructOf(TokenKind::CASE))) return beginsLabel(found);
  if (last_.kind != TokenKind::IDENTIFIER) return false;
  const int next = queue_.ahead().kind;
  const bool declares = next == ':' || next == ',' || next == TokenKind::AT;
  if (!continuesStatement(next) && !declares) return false;
  return next == TokenKind::ASSIGN || !isInLineOfLast(found);
}

// True if the bracket that is open is closed before the statement ends.
bool TokenStream::closesBracket() {
  std::size_t distance = 1;
  int open = 1;
  for (;; ++distance) {
    const int kind = queue_.ahead(distance).kind;
    if (isStructural(kind) || kind == TokenKind::YYEOF) return false;
    if (roleOf(kind) == TokenRole::OpenBracket) ++open;
    if (roleOf(kind) == TokenRole::CloseBracket && --open == 0) return true;
  }
}

// The token that is certainly missing before `found`, the token delivered last; empty for none.
std::string_view TokenStream::missingAt(Span found, const ExpectedTokens& expected) {
  const int next = last_.kind == TokenKind::IDENTIFIER ? queue_.ahead().kind : 0;
  if (wereOpen_ == 1 && expected.has("']'")) {
    return isStructural(last_.kind) || last_.kind == TokenKind::ASSIGN ? "]" : "";
  }
  if (wereOpen_ == 1 && expected.has("')'")) {
    if (isStructural(last_.kind)) return ")";
    const bool named = next == TokenKind::ASSIGN || next == TokenKind::ARROW;
    return named && expected.has("','") && closesBracket() ? "," : "";
  }
  const bool loop = expected.has("DO");
  if (continuesStatement(next) && (loop || expected.has("THEN")) &&
      isHeaderOpen(loop ? TokenKind::DO : TokenKind::THEN)) {
    return blocks_.top().construct->headerEndName;
  }
  if (expected.has("OF") && endsHeader(beforeLast_) && isHeaderOpen(TokenKind::OF)) return "OF";
  if (!blocks_.any()) return "";
  const bool value = last_.kind == TokenKind::INTEGER || last_.kind == TokenKind::NUMBER ||
                     last_.kind == TokenKind::LITERAL;
  if (blocks_.inDeclarations()) {
    if (value && expected.has("':='") && expected.has("';'")) return ":=";
    if (expected.has("AT") && (next == ';' || next == TokenKind::ASSIGN)) return ":";
  } else if (expected.text() == "':='") {
    const bool begins =
        value || last_.kind == TokenKind::IDENTIFIER || last_.kind == TokenKind::NOT;
    return begins ? ":=" : "";
  }
  return expected.has("';'") && !expected.has("IF") && beginsAnew(found) ? ";" : "";
}

// The sign that is meant by `found`, the token delivered last, with the one next to it: `==`, `=:`
// and the like. Without a text if it is not known.
TokenStream::Replacement TokenStream::meantSign(Span found, const ExpectedTokens& expected) {
  const Token& next = queue_.ahead();
  const bool doubled = next.span.begin == found.end && (next.kind == '=' || next.kind == ':');
  if (last_.kind == '=' && expected.has("':='")) {
    return {{found.begin, doubled ? next.span.end : found.end}, ":="};
  }
  if (expected.has("'='")) {
    const bool header = blocks_.any() && blocks_.top().inHeader;
    if (last_.kind == TokenKind::ASSIGN && header) return {found, "="};
    return {found, last_.kind == TokenKind::ARROW ? ">=" : ""};
  }
  // Where an operand is expected, a sign ends right before the token.
  if (!expected.has("NOT") || endBefore(found) != found.begin) return {};
  if (last_.kind == '=') {
    if (beforeLast_ == '=') return {{found.begin - 1, found.end}, "="};
    if (beforeLast_ == TokenKind::ASSIGN) return {{found.begin - 2, found.end}, ":="};
  }
  if (last_.kind == '<' && beforeLast_ == '=') return {{found.begin - 1, found.end}, "<="};
  return {};
}

void TokenStream::suggest(Span found, const ExpectedTokens& expected, Remarks& said) {
  if (last_.kind == TokenKind::IDENTIFIER && !continuesStatement(queue_.ahead().kind)) {
    misspeltKeywords_.suggest(found, expected, said);
  }
  if (!said.fixes.empty()) return;
  if (const Replacement sign = meantSign(found, expected); !sign.text.empty()) {
    said.fix(errors_.rangeOf(sign.span), std::string(sign.text));
  } else if (const std::string_view missing = missingAt(found, expected); !missing.empty()) {
    addMissing(&said, missing, found);
  }
}

// Closes inner blocks until a block of `construct` is innermost. If none is open, the parser
// reports the token.
int TokenStream::closeUntil(const Construct* construct, const Token& token) {
  if (blocks_.isTop(construct)) return token.kind == TokenKind::UNTIL ? 0 : missingBeforeEnd(token);
  return blocks_.isOpen(construct) ? closeTop(token) : 0;
}

}  // namespace refhost
