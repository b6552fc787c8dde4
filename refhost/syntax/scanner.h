// The scanner, which makes tokens of characters. Its rules are in lexer.l.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "refhost/syntax/no_warns.h"
#include "refhost/syntax/span.h"

namespace refhost {

class SyntaxErrors;

class Scanner {
 public:
  Scanner(std::string_view text, SyntaxErrors& errors);
  ~Scanner();
  Scanner(const Scanner&) = delete;
  Scanner& operator=(const Scanner&) = delete;

  // Returns the next token and sets its span. After an error, which is reported here, the token is
  // YYerror: the parser recovers without reporting another error.
  int next(Span& span);

  // Called by the rules of lexer.l.
  std::size_t read(char* buffer, std::size_t size);
  void advance(int length);
  void open() { opened_ = span_; }
  int unterminated(std::string_view what, bool toEnd);  // toEnd: skips the rest of the file
  bool isBinary() const;
  int badCharacter();
  void closePragma() { noWarns_.pragma({opened_.begin, span_.end}); }
  int binary();

  int commentDepth = 0;  // of nested comments or pragmas

 private:
  std::string_view text_;
  SyntaxErrors& errors_;
  void* state_ = nullptr;
  std::size_t read_ = 0;  // bytes copied to the generated scanner
  Span span_;             // of the current token
  Span opened_;           // of the opening of the current comment or pragma
  NoWarns noWarns_;
};

}  // namespace refhost
