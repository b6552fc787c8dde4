// Constructs of the language that the reference host does not support, each named once. Most begin
// with a word that is no keyword: elsewhere it is a name like any other.
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

  // Moves `token`, behind one of kind `previous`, past the constructs that are left out, or makes
  // of it the supported word that is most like it.
  void replace(Token& token, int previous);
  // The parser could not go on at `found`: reports the construct that is to blame and returns
  // true; false when it is none of these.
  bool refuse(Span found, const ExpectedTokens& expected);

 private:
  struct Construct;

  static const Construct* constructOf(std::string_view word);
  const Construct* constructAt(const Token& token, int previous);
  void skip(Token& token, const Construct& construct);
  void replaceBlock(Token& token, int previous);
  void replaceType(Token& token, int previous);
  bool beginsLabel(Span name);

  TokenQueue& queue_;
  const OpenBlocks& blocks_;
  SyntaxErrors& errors_;
};

// A type of the standard that no variable can have; a program may declare one of its name.
bool isUnsupportedType(std::string_view name);

}  // namespace refhost
