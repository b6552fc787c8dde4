// Delivers the tokens to the parser and keeps the block structure balanced, so that a missing
// END_IF costs one message and not the rest of the file.
//
// To the parser every block is closed and every header ended (THEN, OF, DO): a missing token is
// reported and inserted. After a syntax error the parser resumes at the next ';', which is inserted
// if a block begins or ends first. Nesting that is too deep is reported and skipped before the
// parser's stack grows with it.
#pragma once

#include <cstdint>
#include <deque>
#include <string_view>

#include "refhost/syntax/misspelt_keywords.h"
#include "refhost/syntax/mistaken_words.h"
#include "refhost/syntax/open_blocks.h"
#include "refhost/syntax/span.h"
#include "refhost/syntax/token_queue.h"
#include "refhost/syntax/unsupported.h"

namespace refhost {

class ExpectedTokens;
struct Remarks;
class SyntaxErrors;

class TokenStream {
 public:
  TokenStream(std::string_view text, SyntaxErrors& errors);

  int next(Span& span);

  // Program units that have begun.
  int units() const { return units_; }

  // To be called at a syntax error at `found`, the token delivered last. Prepares the recovery. If
  // the token is part of a construct that is not supported, reports that and returns true.
  bool refuses(Span found, const ExpectedTokens& expected);
  // Adds to the message on `found` what was probably meant: a keyword that is misspelt, or a token
  // that is missing or another one.
  void suggest(Span found, const ExpectedTokens& expected, Remarks& said);
  // To be called when the parser has found the ';' that ends a mistake.
  void endMistake() { endedMistake_ = true; }
  // To be called when the parser resumes at the token delivered last without looking for a ';'.
  void resumeInPlace();

 private:
  // What is known of a syntax error since which no ';' has been delivered. Behind a mistake in a
  // header the parser resumes at once, but may meet another one without a word.
  enum class Recovery : std::uint8_t { None, Certain, Possible };
  // The parser reports no error in so many tokens behind one.
  static constexpr int kQuietTokens = 3;

  int deliver(const Token& token, Span& span);
  int mistakeEnd();
  void noteBroken();
  void noteSwallowed(const Token& token);
  bool splitsString(Span found) const;
  bool repeatsName(const Token& token);
  bool isConsequence(const ExpectedTokens& expected);
  bool dividesDeclarations() const;
  void muteRest(const Token& token);
  std::uint32_t endBefore(Span token) const;
  void addMissing(Remarks* said, std::string_view token, Span found) const;
  bool isHeaderOpen(int end);
  bool beginsAnew(Span found);
  bool closesBracket();
  std::string_view missingAt(Span found, const ExpectedTokens& expected);

  // Determines the kind of a word from its context.
  void takeWord(Token& token);
  bool isPlainName(const Token& token) const;
  int kindHere(const Token& token);
  int testPartHere(std::string_view text);
  void takeBinds(Token& token);
  bool inConfiguration() const;
  bool beginsInstance();

  struct Replacement {
    Span span;
    std::string_view text;
  };
  Replacement meantSign(Span found, const ExpectedTokens& expected);
  bool beginsLabel(Span found);
  bool isInLineOfLast(Span found) const;

  // The kind of the token that is missing before `token`; 0 for none. Each function reports it and
  // updates the state as if it had been read.
  int missingBefore(const Token& token);
  bool isPlainTarget(const Token& token) const;
  int missingBeforeOpener(const Token& token);
  int missingBeforeCloser(const Token& token);
  // Takes the closer of another kind of statement for the one that is due.
  void correctCloser(Token& token);
  bool isStray(const Construct* construct);
  int missingBeforeElse(const Token& token);
  int missingBeforeLabel(const Token& token);
  int missingBeforeSection(const Token& token);
  bool closesVariables();
  int missingBeforeName(const Token& token);
  int missingBeforeType(const Token& token);
  int missingHeaderEnd(const Token& token);
  int missingBeforeEnd(const Token& token);
  int closeTop(const Token& token);
  void noteOpener(Remarks& said) const;
  int closeUntil(const Construct* construct, const Token& token);

  // Each updates the state by a token of the source and returns its kind, or YYerror for the token
  // and all that is skipped after it.
  int accept(const Token& token);
  int openBlock(const Token& token);
  int closeBlock(const Token& token);
  void endHeader(int token);
  void skipResultType();
  int skipTooDeep(const Token& token, bool wholeUnit);

  TokenQueue queue_;
  OpenBlocks blocks_;
  SyntaxErrors& errors_;
  MistakenWords mistakenWords_;
  MisspeltKeywords misspeltKeywords_;
  Unsupported unsupported_;
  Token last_;                 // delivered last
  int beforeLast_ = 0;         // the kind of the token before it
  std::uint32_t lastEnd_ = 0;  // the end of the last token that begins elsewhere than last_
  std::deque<Token> again_;    // to be delivered a second time
  Recovery recovery_ = Recovery::None;
  int quiet_ = 0;                       // tokens before the parser reports errors again
  bool discards_ = false;               // the parser discards last_ while it looks for a ';'
  Token held_;                          // the token before which others are inserted
  bool holding_ = false;                // held_ has not been delivered
  bool inHeader_ = false;               // of a FUNCTION, up to its first block or ';'
  bool amidst_ = false;                 // it stands in the midst of a declaration
  bool endedMistake_ = false;           // by the ';' delivered last
  const Construct* crossed_ = nullptr;  // closed by the closer of an outer statement
  bool lostOpener_ = false;             // an error has probably hidden the opener of a statement
  bool inInitial_ = false;              // behind the ':=' of a declaration
  bool betweenUnits_ = false;           // an error between units has been reported
  int units_ = 0;                       // program units that have begun
  bool resumes_ = false;  // last_ begins or ends a block, so the parser can resume there
  int brackets_ = 0;      // open in the current statement
  int wereOpen_ = 0;      // before the token accepted last
  int prefixes_ = 0;      // signs and NOTs in a row
};

}  // namespace refhost
