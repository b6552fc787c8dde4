// The scanner: characters to tokens. Its rules are in lexer.l.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "refhost/syntax/span.h"

namespace refhost {

class SyntaxErrors;

class Scanner {
 public:
  Scanner(std::string_view text, SyntaxErrors& errors);
  ~Scanner();
  Scanner(const Scanner&) = delete;
  Scanner& operator=(const Scanner&) = delete;

  // The next token's number and place. After an error, which is reported here,
  // the token is YYerror: the parser recovers without another word.
  int next(Span& span);

  // For the scanner's rules.
  std::size_t read(char* buffer, std::size_t size);
  void advance(int length);
  void open() { opened_ = span_; }
  int unterminated(std::string_view what, bool toEnd);  // to the end of the file
  bool isBinary() const;
  int badCharacter();
  int binary();

  int commentDepth = 0;  // also of pragmas

 private:
  std::string_view text_;
  SyntaxErrors& errors_;
  void* state_ = nullptr;
  std::size_t read_ = 0;  // bytes given to the generated scanner
  Span span_;             // of the token at hand
  Span opened_;           // of the comment or pragma at hand
};

}  // namespace refhost
