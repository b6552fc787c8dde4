// Constructs of the language that the reference host does not support, each of which is reported by
// name. Most begin with a word that is no keyword, and so may be a name elsewhere.
#pragma once

#include <string_view>

#include "refhost/syntax/open_blocks.h"
#include "refhost/syntax/token_queue.h"

namespace refhost {

class ExpectedTokens;
class SyntaxErrors;

class Unsupported {
 public:
  Unsupported(TokenQueue& queue, const OpenBlocks& blocks, SyntaxErrors& errors)
      : queue_(queue), blocks_(blocks), errors_(errors) {}

  // Skips unsupported constructs that begin at `token`, which follows a token of kind `previous`,
  // or replaces `token` by the most similar keyword that is supported.
  void replace(Token& token, int previous);
  // Takes VAR_x for VAR, so that the variables of the block are declared.
  void replaceBlock(Token& token, int previous);
  // To be called at a syntax error at `found`. If an unsupported construct is the cause, reports it
  // and returns true.
  bool refuse(Span found, const ExpectedTokens& expected);

 private:
  struct Construct;

  static const Construct* constructOf(std::string_view word);
  const Construct* constructAt(const Token& token, int previous);
  void skip(Token& token, const Construct& construct);
  void replaceType(Token& token);
  bool beginsLabel(Span name);

  TokenQueue& queue_;
  const OpenBlocks& blocks_;
  SyntaxErrors& errors_;
};

// A type of the standard that is not supported; a program may declare a type of its name.
bool isUnsupportedType(std::string_view name);

}  // namespace refhost
