#include "refhost/syntax/token_stream.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "hostkit/folding.h"
#include "refhost/messages.h"
#include "refhost/syntax/expected_tokens.h"
#include "refhost/syntax/parser.h"
#include "refhost/syntax/syntax_errors.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

using TokenKind = grammar::Parser::token;

// Words that are keywords in some places only, and names elsewhere.
constexpr Keyword kQualifierWords[] = {{"PERSISTENT", TokenKind::PERSISTENT}};

template <std::size_t N>
int wordOf(std::string_view text, const Keyword (&words)[N]) {
  for (const Keyword& word : words) {
    if (equalIgnoringCase(word.name, text)) return word.kind;
  }
  return TokenKind::IDENTIFIER;
}

}  // namespace

TokenStream::TokenStream(std::string_view text, SyntaxErrors& errors)
    : queue_(text, errors),
      errors_(errors),
      mistakenWords_(queue_, blocks_, errors),
      misspeltKeywords_(queue_, blocks_, errors),
      unsupported_(queue_, blocks_, errors) {}

int TokenStream::next(Span& span) {
  if (std::exchange(discards_, false)) again_ = {{mistakeEnd(), last_.span}, last_};
  if (!again_.empty()) {
    const Token token = again_.front();
    again_.pop_front();
    return deliver(token, span);
  }
  Token token = std::exchange(holding_, false) ? held_ : queue_.take();
  span = token.span;
  if (errors_.exhausted()) return TokenKind::YYEOF;
  if (token.kind == TokenKind::YYerror) noteSwallowed(token);
  const bool names = token.kind == TokenKind::IDENTIFIER && last_.kind == TokenKind::IDENTIFIER;
  if (names && repeatsName(token)) token = queue_.take();
  if (std::exchange(endedMistake_, false)) muteRest(token);
  if (token.kind == TokenKind::IDENTIFIER) {
    takeWord(token);
  } else if (token.kind >= TokenKind::IF && token.kind <= TokenKind::RETURN) {
    mistakenWords_.correctKeyword(token, last_.kind);
  }
  if (roleOf(token.kind) == TokenRole::Closer) correctCloser(token);
  int kind = missingBefore(token);
  if (kind != 0) {
    held_ = token;
    holding_ = true;
  } else {
    kind = accept(token);
  }
  if (recovery_ != Recovery::None && resumes_) {
    again_.push_back({kind, token.span});
    kind = mistakeEnd();
  }
  return deliver({kind, token.span}, span);
}

int TokenStream::deliver(const Token& token, Span& span) {
  if (quiet_ > 0) --quiet_;
  if (token.kind == TokenKind::YYerror) {
    recovery_ = Recovery::Certain;
  } else if (token.kind == ';' && quiet_ == 0) {
    recovery_ = Recovery::None;
  }
  beforeLast_ = last_.kind;
  if (last_.span.begin != token.span.begin) lastEnd_ = last_.span.end;
  last_ = token;
  span = token.span;
  return token.kind;
}

// The token that ends a mistake in front of one at which the parser can resume. Where there may be
// no mistake it is an empty statement.
int TokenStream::mistakeEnd() {
  if (recovery_ != Recovery::Certain) return ';';
  resumeInPlace();
  return TokenKind::MISTAKE_END;
}

void TokenStream::resumeInPlace() {
  discards_ = false;
  recovery_ = Recovery::Possible;
  quiet_ = kQuietTokens;
}

// Nearly all words of statements are names that the characters around them tell, which spares them
// the search among words that are no names.
bool TokenStream::isPlainName(const Token& token) const {
  if (!blocks_.any() || blocks_.inDeclarations() || inConfiguration()) return false;
  const std::string_view word = queue_.textOf(token);
  if (toLower(word[0]) == 'e' && equalIgnoringCase(word.substr(0, 3), "END")) return false;
  const std::string_view behind = queue_.behind(token.span);
  if (behind.empty() || behind[0] == '=') return false;  // REF=
  return TokenQueue::isMark(behind[0]) || TokenQueue::isBracket(behind);
}

void TokenStream::takeWord(Token& token) {
  if (isPlainName(token)) return;
  const bool headed = beforeLast_ == TokenKind::TEST && last_.kind == TokenKind::LITERAL;
  unsupported_.replace(token, headed ? static_cast<int>(';') : last_.kind);
  token.kind = kindHere(token);
  if (queue_.isFollowedBy(token.span, '=')) takeBinds(token);
  mistakenWords_.joinEnd(token, last_.kind);
  if (token.kind == TokenKind::IDENTIFIER && !queue_.isFollowedByMark(token.span)) {
    // Behind its header the parts of a unit begin as they do behind a ';'.
    const bool instance = beforeLast_ == TokenKind::PROGRAM && inConfiguration();
    const bool header = (opensUnit(beforeLast_) && !instance) || (inHeader_ && beforeLast_ == ':');
    misspeltKeywords_.correct(token, header ? static_cast<int>(';') : last_.kind);
  }
  unsupported_.replaceBlock(token, last_.kind);
}

// REF= behind the name of what it binds.
void TokenStream::takeBinds(Token& token) {
  const bool afterName = endsDeclaration(last_.kind) || last_.kind == '^';
  const bool binds = afterName && equalIgnoringCase(queue_.textOf(token), "REF");
  if (!binds || queue_.ahead().kind != '=') return;
  queue_.take();
  ++token.span.end;
  token.kind = TokenKind::BINDS;
}

int TokenStream::kindHere(const Token& token) {
  if (token.kind != TokenKind::IDENTIFIER) return token.kind;
  const std::string_view text = queue_.textOf(token);
  if (const int part = testPartHere(text); part != TokenKind::IDENTIFIER) return part;
  const bool inVariables = blocks_.isIn(Construct::Kind::Variables);
  if (inConfiguration() && !inVariables) return wordOf(text, words::kConfiguration);
  const bool type = last_.kind == ':' || last_.kind == TokenKind::OF ||
                    last_.kind == TokenKind::TO || last_.kind == TokenKind::REF_TO;
  if (type && equalIgnoringCase(text, "REFERENCE") && queue_.ahead().kind == TokenKind::TO) {
    return TokenKind::REFERENCE;
  }
  if (opensVariables(last_.kind) || last_.kind == TokenKind::CONSTANT ||
      last_.kind == TokenKind::RETAIN) {
    return wordOf(text, kQualifierWords);
  }
  if (inVariables && last_.kind == TokenKind::IDENTIFIER) return wordOf(text, words::kEdges);
  return token.kind;
}

// The words of unit tests are keywords where a unit begins, and their ends in such a unit. Within
// another unit, whose end is missing then, they are told by what follows them.
int TokenStream::testPartHere(std::string_view text) {
  if (last_.kind == '.') return TokenKind::IDENTIFIER;  // the name of a member
  if (blocks_.any() && blocks_.begin()->construct->isTestUnit()) {
    if (const int end = wordOf(text, words::kTestEnds); end != TokenKind::IDENTIFIER) return end;
  }
  // Behind PROGRAM and the like it is the name of the unit.
  const bool name = opensUnit(last_.kind) && !constructOf(last_.kind)->isTestUnit();
  if (name || (last_.kind != 0 && !isStructural(last_.kind))) return TokenKind::IDENTIFIER;
  const int part = wordOf(text, words::kTests);
  if (part == TokenKind::IDENTIFIER || !blocks_.any()) return part;
  const int next = queue_.ahead().kind;
  const bool begins = part == TokenKind::TEST ? next == TokenKind::LITERAL : opensVariables(next);
  return begins ? part : static_cast<int>(TokenKind::IDENTIFIER);
}

bool TokenStream::inConfiguration() const {
  return blocks_.isUnit(constructOf(TokenKind::CONFIGURATION));
}

// In a configuration PROGRAM begins a program instance, unless declarations or statements follow.
bool TokenStream::beginsInstance() {
  if (queue_.ahead().kind != TokenKind::IDENTIFIER) return true;
  const int next = queue_.ahead(2).kind;
  if (next != TokenKind::IDENTIFIER) return next == ';' || !isStructural(next);
  return !continuesStatement(queue_.ahead(3).kind);
}

int TokenStream::accept(const Token& token) {
  const TokenRole role = roleOf(token.kind);
  if (role != TokenRole::Prefix) prefixes_ = 0;
  resumes_ = false;
  wereOpen_ = brackets_;
  switch (role) {
    case TokenRole::Opener:
      return token.kind == TokenKind::PROGRAM && inConfiguration() ? token.kind : openBlock(token);
    case TokenRole::Closer:
      return closeBlock(token);
    case TokenRole::HeaderEnd:
      endHeader(token.kind);
      break;
    case TokenRole::Until:
      resumes_ = blocks_.isTop(constructOf(TokenKind::REPEAT));
      if (blocks_.any()) blocks_.top().hasUntil = true;
      break;
    case TokenRole::Else:
      resumes_ =
          blocks_.isTop(constructOf(TokenKind::IF)) || blocks_.isTop(constructOf(TokenKind::CASE));
      break;
    case TokenRole::Elsif:
      if (blocks_.isTop(constructOf(TokenKind::IF))) {
        resumes_ = true;
        blocks_.top().begin = token.span.begin;
        blocks_.top().inHeader = true;
      }
      break;
    case TokenRole::OpenBracket:
      if (++brackets_ > kMaxNesting) return skipTooDeep(token, false);
      break;
    case TokenRole::CloseBracket:
      brackets_ = std::max(brackets_ - 1, 0);
      break;
    case TokenRole::Semicolon:
      brackets_ = 0;
      inHeader_ = false;
      inInitial_ = false;
      break;
    case TokenRole::Prefix:
      if (++prefixes_ > kMaxNesting) return skipTooDeep(token, false);
      break;
    default:
      if (token.kind == TokenKind::TO && blocks_.any()) blocks_.top().hasTo = true;
      // Within brackets there are the values of an enumeration.
      inInitial_ = inInitial_ || (token.kind == TokenKind::ASSIGN && brackets_ == 0);
      break;
  }
  return token.kind;
}

int TokenStream::openBlock(const Token& token) {
  brackets_ = 0;
  inInitial_ = false;
  inHeader_ = token.kind == TokenKind::FUNCTION;
  if (opensUnit(token.kind)) {
    errors_.beginUnit();
    betweenUnits_ = false;
    lostOpener_ = false;
    crossed_ = nullptr;
    if (constructOf(token.kind)->isProgramUnit()) ++units_;
  } else if (!blocks_.any() && token.kind != TokenKind::VAR_GLOBAL &&
             token.kind != TokenKind::VAR_CONFIG) {
    return token.kind;
  }
  if (blocks_.count() >= std::size_t{kMaxNesting}) return skipTooDeep(token, true);
  const Construct& construct = *constructOf(token.kind);
  resumes_ = construct.kind == Construct::Kind::Statement && !inConfiguration();
  blocks_.open(construct, token.span);
  blocks_.top().doubtful = errors_.reportedSince(token.span.begin);
  blocks_.top().hasPaths = token.kind == TokenKind::VAR_CONFIG;
  return token.kind;
}

int TokenStream::closeBlock(const Token& token) {
  brackets_ = 0;
  inHeader_ = false;
  if (!blocks_.isTop(constructOf(token.kind))) return token.kind;
  resumes_ = true;
  blocks_.close();
  return token.kind;
}

void TokenStream::endHeader(int token) {
  brackets_ = 0;
  const bool expected = blocks_.any() && blocks_.top().construct->headerEnd == token;
  if (!expected || !std::exchange(blocks_.top().inHeader, false)) {
    lostOpener_ = lostOpener_ || recovery_ != Recovery::None;
  }
}

// What cannot begin a statement or a declaration behind a mistake is part of it.
void TokenStream::muteRest(const Token& token) {
  // A ';' at which an error is reported stands in the midst of a declaration.
  amidst_ = blocks_.inDeclarations() && errors_.reportedSince(last_.span.begin);
  if (isStructural(token.kind)) return;
  const int next = token.kind == TokenKind::IDENTIFIER ? queue_.ahead().kind : 0;
  if (next == ':' || next == ',' || continuesStatement(next)) return;
  errors_.muteUntil(token.span.begin + 1);
  if (amidst_) errors_.muteDeclaration(token.span.end);
}

// An error in a declaration leaves open which names there are, but not one in an initial value,
// unless the names of another declaration seem to stand there.
void TokenStream::noteBroken() {
  const bool declares = brackets_ == 0 && (last_.kind == ':' || last_.kind == ',');
  if (inInitial_ && blocks_.inDeclarations() && !declares) return;
  if (!blocks_.inProgramUnit()) {
    errors_.refuseDeclarations();
  } else if (blocks_.inDeclarations() || inHeader_ || last_.kind == ':' || dividesDeclarations()) {
    errors_.refusePart();
  }
}

// A string without an end hides what stands behind it in its line.
void TokenStream::noteSwallowed(const Token& token) {
  const std::string_view text = queue_.textOf(token);
  if (text.find_first_of("'\"") == std::string_view::npos) return;
  blocks_.doubtEndsIn(text);
  if (!blocks_.inDeclarations()) return;
  inInitial_ = false;
  noteBroken();
}

// True if a string ends right before `found` because an earlier one in the line has no end, which
// the scanner will report.
bool TokenStream::splitsString(Span found) const {
  for (const char quote : {'\'', '"'}) {
    if (!queue_.isPrecededBy(found, quote)) continue;
    const std::string_view rest = queue_.textFrom(found.begin);
    const std::string_view line = rest.substr(0, rest.find_first_of("\r\n"));
    if (std::count(line.begin(), line.end(), quote) % 2 != 0) return true;
  }
  return false;
}

// True of the second of two names if a unit has both, which is reported here.
bool TokenStream::repeatsName(const Token& token) {
  if (!opensUnit(beforeLast_) || beforeLast_ == TokenKind::TYPE) return false;
  const bool repeats = equalIgnoringCase(queue_.textOf(token), queue_.textOf(last_));
  if (!repeats || continuesStatement(queue_.ahead().kind)) return false;
  errors_.unexpected(token.span, beforeLast_ == TokenKind::FUNCTION ? "':'" : "VAR or statement");
  return true;
}

// True of a token that begins or ends a block of declarations.
bool TokenStream::dividesDeclarations() const {
  if (opensVariables(last_.kind)) return true;
  return roleOf(last_.kind) == TokenRole::Closer && !closesUnit(last_.kind) &&
         constructOf(last_.kind)->kind != Construct::Kind::Statement;
}

// True of an error that is due to another one, which has hidden the beginning of a block or of a
// declaration.
bool TokenStream::isConsequence(const ExpectedTokens& expected) {
  // The token closes the innermost block, at the end of which something else is missing.
  const bool unfinished = expected.has("';'") && !expected.has("identifier");
  if (resumes_ && (closesUnit(last_.kind) || unfinished)) return false;
  const TokenRole role = roleOf(last_.kind);
  if (!blocks_.any()) {
    const bool closes = role == TokenRole::Closer && errors_.reportedInUnit();
    return std::exchange(betweenUnits_, true) || closes;
  }
  if (dividesDeclarations()) return errors_.isIncomplete() || errors_.declarationsMissing();
  const bool branches = role == TokenRole::Elsif || role == TokenRole::Else ||
                        role == TokenRole::Until || role == TokenRole::HeaderEnd;
  if (!branches && (role != TokenRole::Closer || closesUnit(last_.kind))) return false;
  if (!branches && constructOf(last_.kind) == std::exchange(crossed_, nullptr)) return true;
  return std::exchange(lostOpener_, branches);
}

bool TokenStream::refuses(Span found, const ExpectedTokens& expected) {
  const bool consequence = isConsequence(expected);
  // A declaration in the midst of statements, behind one that could not be parsed.
  const bool declares = last_.kind == ':' && errors_.isIncomplete();
  noteBroken();
  recovery_ = last_.kind == ';' ? Recovery::None : Recovery::Certain;
  discards_ = std::exchange(resumes_, false);
  if (inHeader_ && (!isStructural(last_.kind) || last_.kind == TokenKind::OF)) skipResultType();
  if (consequence || splitsString(found)) return true;
  return unsupported_.refuse(found, expected) || declares;
}

// Skips an invalid type of a FUNCTION, which could otherwise be parsed as statements.
void TokenStream::skipResultType() {
  Token token;
  do {
    token = queue_.take();
  } while (token.kind != TokenKind::YYEOF &&
           (token.kind == TokenKind::OF || !isStructural(token.kind)));
  queue_.putBack(token);
  queue_.putBack({TokenKind::NO_TYPE, {token.span.begin, token.span.begin}});
}

int TokenStream::skipTooDeep(const Token& token, bool wholeUnit) {
  errors_.tooDeep(token.span);
  brackets_ = 0;
  prefixes_ = 0;
  do {
    held_ = queue_.take();
  } while (held_.kind != TokenKind::YYEOF && !opensUnit(held_.kind) && !closesUnit(held_.kind) &&
           (wholeUnit || !isStructural(held_.kind)));
  holding_ = true;
  // The blocks that remain open are not reported again.
  if (wholeUnit) errors_.muteUntil(held_.span.end + 1);
  return TokenKind::YYerror;
}

}  // namespace refhost
