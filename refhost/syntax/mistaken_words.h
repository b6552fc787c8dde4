// Corrects keywords that are used as names, and misspelt END_x.
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

  // Both report the mistake and correct `token`, which follows a token of kind `previous`.
  void correctKeyword(Token& token, int previous);
  void joinEnd(Token& token, int previous);

 private:
  TokenQueue& queue_;
  const OpenBlocks& blocks_;
  SyntaxErrors& errors_;
  std::uint32_t keywordNames_ = 0;  // a bit for each keyword that was declared as a name
};

}  // namespace refhost
