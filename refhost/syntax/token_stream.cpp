#include "refhost/syntax/token_stream.h"

#include <algorithm>
#include <cstddef>

#include "grammar.h"
#include "hostkit/folding.h"
#include "refhost/messages.h"
#include "refhost/syntax/blocks.h"
#include "refhost/syntax/parser.h"
#include "refhost/syntax/syntax_errors.h"

namespace refhost {

namespace {

using Kind = grammar::Parser::token;

// Words that are keywords where they are asked for.
struct Word {
  std::string_view text;
  int kind;
};
constexpr Word kConfigurationWords[] = {{"RESOURCE", Kind::RESOURCE},
                                        {"END_RESOURCE", Kind::END_RESOURCE},
                                        {"ON", Kind::ON},
                                        {"TASK", Kind::TASK},
                                        {"WITH", Kind::WITH}};
constexpr Word kQualifierWords[] = {{"PERSISTENT", Kind::PERSISTENT}};
constexpr Word kEdgeWords[] = {{"R_EDGE", Kind::R_EDGE}, {"F_EDGE", Kind::F_EDGE}};

template <std::size_t N>
int kindOf(std::string_view text, const Word (&words)[N]) {
  for (const Word& word : words) {
    if (equalIgnoringCase(word.text, text)) return word.kind;
  }
  return Kind::IDENTIFIER;
}

}  // namespace

TokenStream::TokenStream(std::string_view text, SyntaxErrors& errors)
    : text_(text), scanner_(text, errors), errors_(errors) {}

void TokenStream::scan(Token& token) {
  if (ahead_.empty()) {
    token.kind = scanner_.next(token.span);
  } else {
    token = ahead_.front();
    ahead_.pop_front();
  }
}

const TokenStream::Token& TokenStream::ahead(std::size_t distance) {
  while (ahead_.size() < distance) {
    Token token;
    token.kind = scanner_.next(token.span);
    ahead_.push_back(token);
  }
  return ahead_[distance - 1];
}

int TokenStream::next(Span& span) {
  Token token = held_;
  if (!holding_) scan(token);
  holding_ = false;
  span = token.span;
  if (errors_.exhausted()) return Kind::YYEOF;
  if (token.kind == Kind::IDENTIFIER) {
    takeWord(token);
  } else if (token.kind >= Kind::IF && token.kind <= Kind::RETURN) {
    takeKeyword(token);
  }
  int kind = missingBefore(token);
  if (kind != 0) {
    held_ = token;
    holding_ = true;
  } else {
    kind = accept(token);
  }
  span = token.span;
  previous_ = kind;
  return kind;
}

void TokenStream::takeWord(Token& token) {
  skipLeftOut(token);
  takeUnknownBlock(token);
  takeUnknownType(token);
  token.kind = kindHere(token);
  joinEnd(token);
}

int TokenStream::kindHere(const Token& token) const {
  if (token.kind != Kind::IDENTIFIER) return token.kind;
  const bool inVariables = inUnit() && blocks_.back().opener == Kind::VAR;
  if (inConfiguration() && !inVariables) return kindOf(textOf(token), kConfigurationWords);
  if (opensVariables(previous_) || previous_ == Kind::CONSTANT || previous_ == Kind::RETAIN) {
    return kindOf(textOf(token), kQualifierWords);
  }
  if (inVariables && previous_ == Kind::IDENTIFIER) return kindOf(textOf(token), kEdgeWords);
  return token.kind;
}

// The token that the source lacks in front of `token`; 0 for none. Reports it and
// follows it in the state of the blocks.
int TokenStream::missingBefore(const Token& token) {
  if (!inUnit()) return 0;
  switch (token.kind) {
    case Kind::PROGRAM:
      return inConfiguration() && beginsInstance() && !inDeclarations() ? 0 : closeTop(token);
    case Kind::IDENTIFIER:
      if (inHeader_ && previous_ == Kind::IDENTIFIER) return missingBeforeType(token);
      return blocks_.back().opener == Kind::VAR ? missingBeforeName(token) : 0;
    case Kind::YYEOF:
    case Kind::FUNCTION:
    case Kind::FUNCTION_BLOCK:
    case Kind::TYPE:
    case Kind::CONFIGURATION:
      return closeTop(token);
    case Kind::RESOURCE:
      return blocks_.size() > 1 ? closeTop(token) : 0;
    case Kind::END_PROGRAM:
    case Kind::END_FUNCTION:
    case Kind::END_FUNCTION_BLOCK:
    case Kind::END_TYPE:
    case Kind::END_CONFIGURATION:
      // The end of another kind of unit than the one at hand ends that one too.
      return blocks_.size() > 1 || blocks_.back().opener != openerOf(token.kind) ? closeTop(token)
                                                                                 : 0;
    case Kind::VAR:
    case Kind::VAR_INPUT:
    case Kind::VAR_OUTPUT:
    case Kind::VAR_IN_OUT:
    case Kind::VAR_TEMP:
    case Kind::VAR_GLOBAL:
    case Kind::VAR_EXTERNAL:
      return inDeclarations() ? closeTop(token) : 0;
    case Kind::IF:
    case Kind::CASE:
    case Kind::FOR:
    case Kind::WHILE:
    case Kind::REPEAT:
      return inDeclarations() ? closeTop(token) : missingHeaderEnd(token);
    case Kind::EXIT:
    case Kind::CONTINUE:
    case Kind::RETURN:
    case ';':
      return missingHeaderEnd(token);
    case Kind::ELSE: {
      const int top = blocks_.back().opener;
      const int missing = missingHeaderEnd(token);
      if (missing != 0 || top == Kind::IF || top == Kind::CASE) return missing;
      return isOpen(Kind::IF) || isOpen(Kind::CASE) ? closeTop(token) : 0;
    }
    case Kind::ELSIF:
      return closeUntil(Kind::IF, token);
    case Kind::UNTIL:
      return closeUntil(Kind::REPEAT, token);
    case Kind::END_VAR:
    case Kind::END_RESOURCE:
    case Kind::END_STRUCT:
    case Kind::END_IF:
    case Kind::END_CASE:
    case Kind::END_FOR:
    case Kind::END_WHILE:
    case Kind::END_REPEAT:
      return closeUntil(openerOf(token.kind), token);
    default:
      return 0;
  }
}

// The same in front of a name in a block of variables: the ';' of a declaration when the
// name begins another one, or END_VAR when it begins a statement.
int TokenStream::missingBeforeName(const Token& token) {
  const bool afterDeclaration = previous_ == ';' || opensVariables(previous_);
  if (!afterDeclaration && !endsDeclaration(previous_)) return 0;
  const int next = ahead(1).kind;
  if (!afterDeclaration) {
    if (next != ':' || brackets_ > 0) return 0;
    errors_.unexpected(token.span, "';'");
    return ';';
  }
  const bool statement =
      next == Kind::ASSIGN || next == '(' || next == '[' || next == '.' || next == '^';
  return statement ? closeTop(token) : 0;
}

// The ':' between a FUNCTION and its type, when the name begins no statement.
int TokenStream::missingBeforeType(const Token& token) {
  const Span opener = wordBefore(wordBefore(token.span.begin).begin);
  const int next = ahead(1).kind;
  if (!equalIgnoringCase(textOf({0, opener}), "FUNCTION")) return 0;
  if (next != Kind::IDENTIFIER && !isStructural(next)) return 0;
  errors_.unexpected(token.span, "':'");
  return ':';
}

int TokenStream::missingHeaderEnd(const Token& token) {
  Block& top = blocks_.back();
  if (!top.inHeader) return 0;
  const BlockRule& rule = ruleOf(top.opener);
  // When the header is known to be wrong, this is no more than a consequence.
  if (!errors_.reportedSince(top.begin)) errors_.unexpected(token.span, rule.headerEndName);
  top.inHeader = false;
  brackets_ = 0;
  return rule.headerEnd;
}

// The same at the end of a block; a REPEAT must have had its UNTIL by then.
int TokenStream::missingBeforeEnd(const Token& token) {
  Block& top = blocks_.back();
  if (top.opener != Kind::REPEAT || top.hasUntil) return missingHeaderEnd(token);
  errors_.unexpected(token.span, "UNTIL");
  top.hasUntil = true;
  return Kind::UNTIL;
}

int TokenStream::closeTop(const Token& token) {
  if (const int missing = missingBeforeEnd(token); missing != 0) return missing;
  const BlockRule& rule = ruleOf(blocks_.back().opener);
  errors_.unexpected(token.span, rule.closerName);
  blocks_.pop_back();
  return rule.closer;
}

// Closes the innermost block until it is one that `opener` opens; leaves the
// blocks alone when no such block is open, for the parser to complain.
int TokenStream::closeUntil(int opener, const Token& token) {
  if (blocks_.back().opener == opener) {
    return token.kind == Kind::UNTIL ? 0 : missingBeforeEnd(token);
  }
  return isOpen(opener) ? closeTop(token) : 0;
}

bool TokenStream::isOpen(int opener) const {
  return std::any_of(blocks_.begin(), blocks_.end(),
                     [opener](const Block& block) { return block.opener == opener; });
}

// In a block that no statement and no other block of variables can stand in.
bool TokenStream::inDeclarations() const {
  const int top = blocks_.back().opener;
  return top == Kind::VAR || top == Kind::STRUCT || top == Kind::TYPE;
}

bool TokenStream::inConfiguration() const {
  return inUnit() && blocks_.front().opener == Kind::CONFIGURATION;
}

// A configuration names its programs with the keyword that begins a unit elsewhere.
bool TokenStream::beginsInstance() {
  if (ahead(1).kind != Kind::IDENTIFIER) return true;
  const Token& next = ahead(2);
  return next.kind == ':' ||
         (next.kind == Kind::IDENTIFIER && kindOf(textOf(next), kConfigurationWords) == Kind::WITH);
}

void TokenStream::endHeader(int opener) {
  brackets_ = 0;
  if (inUnit() && blocks_.back().opener == opener) blocks_.back().inHeader = false;
}

int TokenStream::openBlock(const Token& token) {
  brackets_ = 0;
  inHeader_ = token.kind == Kind::FUNCTION;
  if (opensUnit(token.kind)) {
    errors_.beginUnit();
  } else if (!inUnit() && token.kind != Kind::VAR_GLOBAL) {
    return token.kind;
  }
  if (blocks_.size() >= std::size_t{kMaxNesting}) return skipTooDeep(token, true);
  const int opener = opensVariables(token.kind) ? int{Kind::VAR} : token.kind;
  blocks_.push_back({opener, token.span.begin, ruleOf(opener).headerEnd != 0, false});
  return token.kind;
}

int TokenStream::closeBlock(const Token& token) {
  brackets_ = 0;
  inHeader_ = false;
  if (inUnit() && blocks_.back().opener == openerOf(token.kind)) blocks_.pop_back();
  return token.kind;
}

// Follows a token of the source in the state; returns it, or YYerror in place of
// it and what is skipped.
int TokenStream::accept(const Token& token) {
  const int prefixes = prefixes_;
  prefixes_ = 0;
  switch (token.kind) {
    case Kind::PROGRAM:
      return inConfiguration() ? token.kind : openBlock(token);
    case Kind::FUNCTION:
    case Kind::FUNCTION_BLOCK:
    case Kind::TYPE:
    case Kind::CONFIGURATION:
    case Kind::RESOURCE:
    case Kind::STRUCT:
    case Kind::VAR:
    case Kind::VAR_INPUT:
    case Kind::VAR_OUTPUT:
    case Kind::VAR_IN_OUT:
    case Kind::VAR_TEMP:
    case Kind::VAR_GLOBAL:
    case Kind::VAR_EXTERNAL:
    case Kind::IF:
    case Kind::CASE:
    case Kind::FOR:
    case Kind::WHILE:
    case Kind::REPEAT:
      return openBlock(token);
    case Kind::END_PROGRAM:
    case Kind::END_FUNCTION:
    case Kind::END_FUNCTION_BLOCK:
    case Kind::END_TYPE:
    case Kind::END_CONFIGURATION:
    case Kind::END_RESOURCE:
    case Kind::END_STRUCT:
    case Kind::END_VAR:
    case Kind::END_IF:
    case Kind::END_CASE:
    case Kind::END_FOR:
    case Kind::END_WHILE:
    case Kind::END_REPEAT:
      return closeBlock(token);
    case Kind::THEN:
      endHeader(Kind::IF);
      return token.kind;
    case Kind::OF:
      endHeader(Kind::CASE);
      return token.kind;
    case Kind::DO:
      endHeader(Kind::FOR);
      endHeader(Kind::WHILE);
      return token.kind;
    case Kind::UNTIL:
      if (inUnit()) blocks_.back().hasUntil = true;
      return token.kind;
    case Kind::ELSIF:
      if (inUnit() && blocks_.back().opener == Kind::IF) {
        blocks_.back().begin = token.span.begin;
        blocks_.back().inHeader = true;
      }
      return token.kind;
    case '(':
    case '[':
      return ++brackets_ > kMaxNesting ? skipTooDeep(token, false) : token.kind;
    case ')':
    case ']':
      brackets_ = std::max(brackets_ - 1, 0);
      return token.kind;
    case ';':
      brackets_ = 0;
      inHeader_ = false;
      return token.kind;
    case Kind::NOT:
    case '-':
    case '+':
      prefixes_ = prefixes + 1;
      return prefixes_ > kMaxNesting ? skipTooDeep(token, false) : token.kind;
    default:
      return token.kind;
  }
}

int TokenStream::skipTooDeep(const Token& token, bool wholeUnit) {
  errors_.tooDeep(token.span);
  brackets_ = 0;
  prefixes_ = 0;
  do {
    scan(held_);
  } while (held_.kind != Kind::YYEOF && !opensUnit(held_.kind) && !closesUnit(held_.kind) &&
           (wholeUnit || !isStructural(held_.kind)));
  holding_ = true;
  // The blocks that are left open are no other error.
  if (wholeUnit) errors_.muteUntil(held_.span.end + 1);
  return Kind::YYerror;
}

}  // namespace refhost
