// Between scanner and parser: keeps the block structure sound, so that one
// forgotten END_IF costs one message and not the rest of the file.
//
// The parser sees every block closed and every header ended (THEN, OF, DO): where
// the source forgets one, an error is reported and the token is put in. Constructs
// that are not supported are reported and left out. What is nested too deep is
// reported and left out before the parser's stack grows with it.
#pragma once

#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

#include "refhost/syntax/scanner.h"
#include "refhost/syntax/span.h"

namespace refhost {

class ExpectedTokens;
class SyntaxErrors;
struct LeftOut;

class TokenStream {
 public:
  TokenStream(std::string_view text, SyntaxErrors& errors);

  int next(Span& span);

  // The parser could not go on at `found`, the token delivered last: reports a construct that is
  // not supported, if it is part of one, and returns true. Leads the parser to where it can go on.
  bool refuses(Span found, const ExpectedTokens& expected);

 private:
  struct Token {
    int kind = 0;
    Span span;
  };
  struct Block {
    int opener = 0;
    std::uint32_t begin = 0;
    bool inHeader = false;  // the token that ends its header has yet to come
    bool hasUntil = false;  // of a REPEAT
  };

  void scan(Token& token);
  // The token `distance` after the one that was scanned last.
  const Token& ahead(std::size_t distance);
  std::string_view textOf(const Token& token) const {
    return text_.substr(token.span.begin, token.span.end - token.span.begin);
  }
  void takeWord(Token& token);
  void takeKeyword(Token& token);
  // What a word is where it stands: some are keywords in a few places only.
  int kindHere(const Token& token) const;
  int missingBefore(const Token& token);
  int missingBeforeName(const Token& token);
  int missingBeforeType(const Token& token);
  int missingHeaderEnd(const Token& token);
  int missingBeforeEnd(const Token& token);
  int closeTop(const Token& token);
  int closeUntil(int opener, const Token& token);
  bool isOpen(int opener) const;
  bool inUnit() const { return !blocks_.empty(); }
  bool inDeclarations() const;
  void endHeader(int opener);
  int openBlock(const Token& token);
  int closeBlock(const Token& token);
  int accept(const Token& token);
  void joinEnd(Token& token);
  const LeftOut* leftOutAt(const Token& token);
  void skipLeftOut(Token& token);
  void skip(Token& token, const LeftOut& construct);
  void takeUnknownBlock(Token& token);
  void takeUnknownType(Token& token);
  void skipResultType();
  Span wordBefore(std::uint32_t offset) const;
  bool beginsLabel(Span name);
  bool inConfiguration() const;
  bool beginsInstance();
  int skipTooDeep(const Token& token, bool wholeUnit);

  std::string_view text_;
  Scanner scanner_;
  SyntaxErrors& errors_;
  std::deque<Token> ahead_;  // scanned before their turn
  int previous_ = 0;         // kind of the token delivered last
  std::vector<Block> blocks_;
  Token held_;                      // the token after those that were put in
  bool holding_ = false;            // held_ is yet to be delivered
  bool inHeader_ = false;           // of a FUNCTION, or in what its first statement begins with
  int brackets_ = 0;                // open in the statement at hand
  int prefixes_ = 0;                // signs and NOTs in a row
  std::uint32_t keywordNames_ = 0;  // a bit for each keyword of statements that was declared
};

}  // namespace refhost
