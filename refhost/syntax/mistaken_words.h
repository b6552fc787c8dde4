// Words that the source has in another form than is meant: keywords as names, and closers that are
// not written as one word.
#pragma once

#include <cstdint>

#include "refhost/syntax/open_blocks.h"
#include "refhost/syntax/token_queue.h"

namespace refhost {

class SyntaxErrors;

class MistakenWords {
 public:
  MistakenWords(TokenQueue& queue, const OpenBlocks& blocks, SyntaxErrors& errors)
      : queue_(queue), blocks_(blocks), errors_(errors) {}

  // Both make of `token`, behind one of kind `previous`, what it is meant to be.
  void correctKeyword(Token& token, int previous);
  void joinEnd(Token& token, int previous);

 private:
  TokenQueue& queue_;
  const OpenBlocks& blocks_;
  SyntaxErrors& errors_;
  std::uint32_t keywordNames_ = 0;  // a bit for each keyword of statements that was declared
};

}  // namespace refhost
