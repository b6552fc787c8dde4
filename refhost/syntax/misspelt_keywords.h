// Keywords that are misspelt where no name can stand.
#pragma once

#include <string_view>

#include "refhost/syntax/open_blocks.h"
#include "refhost/syntax/token_queue.h"

namespace refhost {

class ExpectedTokens;
struct Remarks;
class SyntaxErrors;

class MisspeltKeywords {
 public:
  MisspeltKeywords(TokenQueue& queue, const OpenBlocks& blocks, SyntaxErrors& errors)
      : queue_(queue), blocks_(blocks), errors_(errors) {}

  // If `token`, an identifier behind a token of kind `previous`, is nearly a keyword and the tokens
  // around it exclude a name, reports it and takes it for the keyword.
  void correct(Token& token, int previous);
  // Adds a note to the message on the identifier `found` if it is nearly an expected keyword.
  void suggest(Span found, const ExpectedTokens& expected, Remarks& said) const;

 private:
  class Candidates;

  bool canBeKeyword(const Token& token, int previous) const;
  void correctStray(Token& token, int previous);
  void offerUnits(Candidates& candidates);
  void offerInDeclarations(Candidates& candidates, int previous);
  void offerTypes(Candidates& candidates, int previous);
  void offerInConfiguration(Candidates& candidates, int previous);
  void offerInStatements(Candidates& candidates, int previous);
  void offerStatements(Candidates& candidates);
  void offerBehindOperand(Candidates& candidates);
  void offerSections(Candidates& candidates);
  void offerClosers(Candidates& candidates);
  // True if the token `kind` comes before the next ';' or token of the block structure.
  bool hasHeaderEnd(int kind);
  bool isDeclared(std::string_view word) const;

  TokenQueue& queue_;
  const OpenBlocks& blocks_;
  SyntaxErrors& errors_;
};

}  // namespace refhost
