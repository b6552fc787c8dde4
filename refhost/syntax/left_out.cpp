#include "refhost/syntax/left_out.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string>

#include "grammar.h"
#include "hostkit/folding.h"
#include "hostkit/literal.h"
#include "refhost/syntax/blocks.h"
#include "refhost/syntax/expected_tokens.h"
#include "refhost/syntax/syntax_errors.h"
#include "refhost/syntax/token_stream.h"

namespace refhost {

namespace {

using Kind = grammar::Parser::token;
using Extent = LeftOut::Extent;

constexpr const MessageFormat* kRefused = &message::kNotSupported;
constexpr const char* kChart = "Sequential function charts (SFC) are";
constexpr const char* kInstructions = "Instruction lists (IL) are";
constexpr const char* kModifiers = "Modifiers of units and variables are";

constexpr LeftOut kLeftOut[] = {
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
    // Of interest to others than the program.
    {"VAR_ACCESS", Extent::Closer, "END_VAR", nullptr, ""},
    {"VAR_CONFIG", Extent::Closer, "END_VAR", &message::kNoEffect, "VAR_CONFIG"},
};

constexpr std::string_view kLeftOutTypes[] = {"CHAR",         "WCHAR", "LDATE",         "LTOD",
                                              "LTIME_OF_DAY", "LDT",   "LDATE_AND_TIME"};

// Null when no construct begins with the word.
const LeftOut* leftOut(std::string_view word) {
  for (const LeftOut& construct : kLeftOut) {
    if (equalIgnoringCase(construct.opener, word)) return &construct;
  }
  return nullptr;
}

// A statement, a declaration or a part of a header can begin after the token.
bool endsPart(int kind) {
  return kind == 0 || kind == Kind::IDENTIFIER || isStructural(kind) || opensUnit(kind);
}

// No name is followed by such a token.
bool beginsOperand(int kind) {
  return kind == Kind::IDENTIFIER || kind == Kind::INTEGER || kind == Kind::NUMBER ||
         kind == Kind::LITERAL || kind == Kind::DIRECT_ADDRESS;
}

}  // namespace

bool isLeftOutType(std::string_view name) {
  return std::any_of(std::begin(kLeftOutTypes), std::end(kLeftOutTypes),
                     [name](std::string_view type) { return equalIgnoringCase(type, name); });
}

// The construct that `token` begins here and that is to be left out; null for none.
const LeftOut* TokenStream::leftOutAt(const Token& token) {
  if (token.kind != Kind::IDENTIFIER || !endsPart(previous_)) return nullptr;
  const LeftOut* const construct = leftOut(textOf(token));
  if (construct == nullptr) return nullptr;
  const int next = ahead(1).kind;
  const bool bare = construct->format == nullptr && (next == Kind::YYEOF || isStructural(next));
  return bare || beginsOperand(next) ? construct : nullptr;
}

// Moves `token` past the constructs that are left out.
void TokenStream::skipLeftOut(Token& token) {
  while (const LeftOut* const construct = leftOutAt(token)) {
    if (construct->format != nullptr) errors_.add(token.span, *construct->format, construct->what);
    skip(token, *construct);
  }
}

// A block of variables of a kind that is not known: its variables are known all the same.
void TokenStream::takeUnknownBlock(Token& token) {
  constexpr std::string_view kPrefix = "VAR_";
  if (token.kind != Kind::IDENTIFIER || !inUnit() || !endsPart(previous_)) return;
  const std::string_view word = textOf(token);
  if (!equalIgnoringCase(word.substr(0, kPrefix.size()), kPrefix)) return;
  if (ahead(1).kind != Kind::IDENTIFIER || (ahead(2).kind != ':' && ahead(2).kind != ',')) return;
  errors_.add(token.span, message::kNotSupported, std::string(word) + " blocks are");
  token.kind = Kind::VAR;
}

// A union is taken for a structure, and a reference for what it refers to: what they are used
// for is checked all the same.
void TokenStream::takeUnknownType(Token& token) {
  if (token.kind != Kind::IDENTIFIER || (previous_ != ':' && previous_ != Kind::OF)) return;
  const std::string_view word = textOf(token);
  if (equalIgnoringCase(word, "UNION") && ahead(1).kind == Kind::IDENTIFIER) {
    errors_.add(token.span, *kRefused, "Unions (UNION) are");
    token.kind = Kind::STRUCT;
  } else if (equalIgnoringCase(word, "REFERENCE") && ahead(1).kind == Kind::TO) {
    errors_.add(token.span, *kRefused, "References (REFERENCE TO) are");
    scan(token);
    scan(token);
  }
}

// The word that ends before `offset`, blanks between them left out; empty for none.
Span TokenStream::wordBefore(std::uint32_t offset) const {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  const auto isWord = [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
  };
  while (offset > 0 && isBlank(text_[offset - 1])) --offset;
  std::uint32_t begin = offset;
  while (begin > 0 && isWord(text_[begin - 1])) --begin;
  return {begin, offset};
}

// `name: statement`, rather than a declaration among the statements.
bool TokenStream::beginsLabel(Span name) {
  if (name.begin == name.end || (name.begin > 0 && text_[name.begin - 1] == '.')) return false;
  const int next = ahead(1).kind;
  if (next == Kind::IDENTIFIER) {
    return ahead(2).kind != ';' && !namesLiteralType(textOf(ahead(1)));
  }
  const bool jumps = next == Kind::EXIT || next == Kind::CONTINUE || next == Kind::RETURN;
  return jumps || (isStructural(next) && next != Kind::STRUCT);
}

// What stands in the place of a FUNCTION's type could be taken for statements.
void TokenStream::skipResultType() {
  Token token;
  do {
    scan(token);
  } while (token.kind != Kind::YYEOF && (token.kind == Kind::OF || !isStructural(token.kind)));
  ahead_.push_front(token);
  ahead_.push_front({Kind::NO_TYPE, {token.span.begin, token.span.begin}});
}

bool TokenStream::refuses(Span found, const ExpectedTokens& expected) {
  if (inHeader_ && (!isStructural(previous_) || previous_ == Kind::OF)) skipResultType();
  const std::string_view text = text_.substr(found.begin, found.end - found.begin);
  const Span before = wordBefore(found.begin);
  const bool assigns = found.end < text_.size() && text_[found.end] == '=';
  const bool declares = inUnit() && inDeclarations();
  const char* what = nullptr;
  if (text == ":=" && expected.has("';'") && expected.has("'*'") && !expected.has("END_REPEAT")) {
    what = "Chained assignments are";
  } else if (assigns && expected.has("':='") &&
             (equalIgnoringCase(text, "S") || equalIgnoringCase(text, "R"))) {
    what = "Set and reset assignments (S=, R=) are";
  } else if (assigns && expected.has("':='") && equalIgnoringCase(text, "REF")) {
    what = "Reference assignments (REF=) are";
  } else if (text == "*" && declares && (ahead(1).kind == ']' || ahead(1).kind == ',')) {
    what = "Arrays of any bounds (ARRAY[*]) are";
  } else if (equalIgnoringCase(text, "AT") && declares && blocks_.back().opener == Kind::STRUCT) {
    what = "Addresses of members (AT) are";
  } else if (text == "(" && equalIgnoringCase(textOf({0, before}), "RETURN")) {
    what = "RETURN with a value is";
  } else if (text == ":" && !declares && expected.has("':='") && beginsLabel(before)) {
    found = before;
    what = "Labels are";
    // What is labelled is a statement of its own.
    ahead_.push_front({';', {found.end, found.end}});
  }
  if (what != nullptr) errors_.notSupported(found, what);
  return what != nullptr;
}

void TokenStream::skip(Token& token, const LeftOut& construct) {
  const auto endsUnit = [&token] {
    return token.kind == Kind::YYEOF || opensUnit(token.kind) || closesUnit(token.kind);
  };
  const auto isName = [&token] {
    return token.kind == Kind::IDENTIFIER || token.kind == '.' || token.kind == ',';
  };
  scan(token);
  switch (construct.extent) {
    case LeftOut::Extent::Word:
      break;
    case LeftOut::Extent::Names:
      while (isName() && leftOut(textOf(token)) == nullptr) scan(token);
      break;
    case LeftOut::Extent::Unit:
      while (!endsUnit()) scan(token);
      break;
    case LeftOut::Extent::Closer:
      while (!endsUnit() && !equalIgnoringCase(textOf(token), construct.closer)) scan(token);
      if (endsUnit()) {
        errors_.unexpected(token.span, construct.closer);
      } else {
        scan(token);
      }
      break;
  }
}

}  // namespace refhost
