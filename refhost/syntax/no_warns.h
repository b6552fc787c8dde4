// The pragmas {nowarn}, which silence warnings in parts of the text.
#pragma once

#include <string_view>
#include <vector>

#include "refhost/syntax/span.h"

namespace refhost {

class SyntaxErrors;

// {nowarn NAME...} stands for the line behind whose code it stands; otherwise for the line of the
// next token or, in front of a unit or a block of variables, for all of that.
class NoWarns {
 public:
  NoWarns(std::string_view text, SyntaxErrors& errors) : text_(text), errors_(errors) {}

  // To be called at the end of each pragma.
  void pragma(Span whole);
  // True if some pragma needs to know the next token.
  bool waits() const { return waits_; }
  // Inlined it would slow down the scanner, which hardly ever needs it.
  [[gnu::noinline]] void token(int kind, Span span);

 private:
  struct Waiting {
    std::vector<unsigned int> warnings;
    int closer = 0;  // of the unit or block that it stands for; 0 before the next token
    std::uint32_t begin = 0;
  };

  std::vector<unsigned int> warningsIn(Span words);
  bool settles(Waiting& pragma, int kind, Span span);
  bool isBehindCode(std::uint32_t offset);
  void enterLine(std::uint32_t offset);

  std::string_view text_;
  SyntaxErrors& errors_;
  std::vector<Waiting> waiting_;
  bool waits_ = false;
  // The line that was asked for last, and how far nothing but comments and pragmas was found in it.
  // A line may have many pragmas.
  Span line_;
  std::uint32_t bare_ = 0;
};

}  // namespace refhost
