// Between scanner and parser: keeps the block structure sound, so that one
// forgotten END_IF costs one message and not the rest of the file.
//
// The parser sees every block closed and every header ended (THEN, OF, DO): where
// the source forgets one, an error is reported and the token is put in. Constructs
// that are not supported are reported and left out. What is nested too deep is
// reported and left out before the parser's stack grows with it.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "refhost/syntax/scanner.h"
#include "refhost/syntax/span.h"

namespace refhost {

class SyntaxErrors;

class TokenStream {
 public:
  TokenStream(std::string_view text, SyntaxErrors& errors);

  int next(Span& span);

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

  void scan(Token& token) { token.kind = scanner_.next(token.span); }
  int missingBefore(const Token& token);
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
  void skipUnsupported(Token& token);
  int skipTooDeep(const Token& token, bool wholeUnit);

  Scanner scanner_;
  SyntaxErrors& errors_;
  std::vector<Block> blocks_;
  Token held_;            // the token after those that were put in
  bool holding_ = false;  // held_ is yet to be delivered
  int brackets_ = 0;      // open in the statement at hand
  int prefixes_ = 0;      // signs and NOTs in a row
};

}  // namespace refhost
