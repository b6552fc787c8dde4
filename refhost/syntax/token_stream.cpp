#include "refhost/syntax/token_stream.h"

#include <algorithm>
#include <cstddef>

#include "grammar.h"
#include "refhost/messages.h"
#include "refhost/syntax/parser.h"
#include "refhost/syntax/syntax_errors.h"

namespace refhost {

namespace {

using Kind = grammar::Parser::token;

struct BlockRule {
  int opener;
  int closer;
  int headerEnd;  // 0: none
  const char* closerName;
  const char* headerEndName;
};

constexpr BlockRule kBlocks[] = {
    {Kind::PROGRAM, Kind::END_PROGRAM, 0, "END_PROGRAM", ""},
    {Kind::FUNCTION, Kind::END_FUNCTION, 0, "END_FUNCTION", ""},
    {Kind::FUNCTION_BLOCK, Kind::END_FUNCTION_BLOCK, 0, "END_FUNCTION_BLOCK", ""},
    {Kind::TYPE, Kind::END_TYPE, 0, "END_TYPE", ""},
    {Kind::VAR, Kind::END_VAR, 0, "END_VAR", ""},
    {Kind::STRUCT, Kind::END_STRUCT, 0, "END_STRUCT", ""},
    {Kind::IF, Kind::END_IF, Kind::THEN, "END_IF", "THEN"},
    {Kind::CASE, Kind::END_CASE, Kind::OF, "END_CASE", "OF"},
    {Kind::FOR, Kind::END_FOR, Kind::DO, "END_FOR", "DO"},
    {Kind::WHILE, Kind::END_WHILE, Kind::DO, "END_WHILE", "DO"},
    {Kind::REPEAT, Kind::END_REPEAT, 0, "END_REPEAT", ""},
};

const BlockRule& ruleOf(int opener) {
  return *std::find_if(std::begin(kBlocks), std::end(kBlocks),
                       [opener](const BlockRule& rule) { return rule.opener == opener; });
}

int openerOf(int closer) {
  return std::find_if(std::begin(kBlocks), std::end(kBlocks),
                      [closer](const BlockRule& rule) { return rule.closer == closer; })
      ->opener;
}

bool opensUnit(int kind) {
  return kind == Kind::PROGRAM || kind == Kind::FUNCTION || kind == Kind::FUNCTION_BLOCK ||
         kind == Kind::TYPE;
}

bool closesUnit(int kind) {
  return kind == Kind::END_PROGRAM || kind == Kind::END_FUNCTION ||
         kind == Kind::END_FUNCTION_BLOCK || kind == Kind::END_TYPE;
}

// The token is part of the block structure or ends a statement.
bool isStructural(int kind) {
  return kind == ';' || kind == Kind::ELSIF || kind == Kind::ELSE || kind == Kind::UNTIL ||
         (kind >= Kind::VAR && kind <= Kind::VAR_TEMP) ||
         std::any_of(std::begin(kBlocks), std::end(kBlocks), [kind](const BlockRule& rule) {
           return kind == rule.opener || kind == rule.closer || kind == rule.headerEnd;
         });
}

struct UnsupportedRule {
  int opener;
  int closer;
  const char* what;
};

constexpr UnsupportedRule kUnsupported[] = {
    {Kind::VAR_GLOBAL, Kind::END_VAR, "Global variables (VAR_GLOBAL) are"},
    {Kind::VAR_EXTERNAL, Kind::END_VAR, "Global variables (VAR_EXTERNAL) are"},
    {Kind::CONFIGURATION, Kind::END_CONFIGURATION, "Configurations are"},
};

}  // namespace

TokenStream::TokenStream(std::string_view text, SyntaxErrors& errors)
    : scanner_(text, errors), errors_(errors) {}

int TokenStream::next(Span& span) {
  Token token = held_;
  if (!holding_) scan(token);
  holding_ = false;
  span = token.span;
  if (errors_.exhausted()) return Kind::YYEOF;
  skipUnsupported(token);
  int kind = missingBefore(token);
  if (kind != 0) {
    held_ = token;
    holding_ = true;
  } else {
    kind = accept(token);
  }
  span = token.span;
  return kind;
}

// The token that the source lacks in front of `token`; 0 for none. Reports it and
// follows it in the state of the blocks.
int TokenStream::missingBefore(const Token& token) {
  if (!inUnit()) return 0;
  switch (token.kind) {
    case Kind::YYEOF:
    case Kind::PROGRAM:
    case Kind::FUNCTION:
    case Kind::FUNCTION_BLOCK:
    case Kind::TYPE:
      return closeTop(token);
    case Kind::END_PROGRAM:
    case Kind::END_FUNCTION:
    case Kind::END_FUNCTION_BLOCK:
    case Kind::END_TYPE:
      // The end of another kind of unit than the one at hand ends that one too.
      return blocks_.size() > 1 || blocks_.back().opener != openerOf(token.kind) ? closeTop(token)
                                                                                 : 0;
    case Kind::VAR:
    case Kind::VAR_INPUT:
    case Kind::VAR_OUTPUT:
    case Kind::VAR_IN_OUT:
    case Kind::VAR_TEMP:
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

void TokenStream::endHeader(int opener) {
  brackets_ = 0;
  if (inUnit() && blocks_.back().opener == opener) blocks_.back().inHeader = false;
}

int TokenStream::openBlock(const Token& token) {
  brackets_ = 0;
  if (opensUnit(token.kind)) {
    errors_.beginUnit();
  } else if (!inUnit()) {
    return token.kind;
  }
  if (blocks_.size() >= std::size_t{kMaxNesting}) return skipTooDeep(token, true);
  const bool isVar = token.kind >= Kind::VAR && token.kind <= Kind::VAR_TEMP;
  const int opener = isVar ? int{Kind::VAR} : token.kind;
  blocks_.push_back({opener, token.span.begin, ruleOf(opener).headerEnd != 0, false});
  return token.kind;
}

int TokenStream::closeBlock(const Token& token) {
  brackets_ = 0;
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
    case Kind::FUNCTION:
    case Kind::FUNCTION_BLOCK:
    case Kind::TYPE:
    case Kind::STRUCT:
    case Kind::VAR:
    case Kind::VAR_INPUT:
    case Kind::VAR_OUTPUT:
    case Kind::VAR_IN_OUT:
    case Kind::VAR_TEMP:
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

// Moves `token` past a construct that is not supported, if it begins one.
void TokenStream::skipUnsupported(Token& token) {
  for (;;) {
    const auto* rule = std::find_if(
        std::begin(kUnsupported), std::end(kUnsupported),
        [&token](const UnsupportedRule& candidate) { return candidate.opener == token.kind; });
    if (rule == std::end(kUnsupported)) return;
    errors_.add(token.span, message::kNotSupported, rule->what);
    // A CONFIGURATION names its programs with the keyword that begins a unit.
    const bool endsAtUnit = rule->opener != Kind::CONFIGURATION;
    do {
      scan(token);
    } while (token.kind != rule->closer && token.kind != Kind::YYEOF &&
             !(endsAtUnit && (opensUnit(token.kind) || closesUnit(token.kind))));
    if (token.kind != rule->closer) {
      errors_.unexpected(token.span, rule->closer == Kind::END_VAR ? "END_VAR" : "");
      return;
    }
    scan(token);
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
