// Between scanner and parser: keeps the block structure sound, so that one
// forgotten END_IF costs one message and not the rest of the file.
//
// The parser sees every block closed and every header ended (THEN, OF, DO): where
// the source forgets one, an error is reported and the token is put in. Behind a mistake
// the parser goes on at the next ';'; where a block begins or ends before, a ';' is put in.
// What is nested too deep is reported and left out before the parser's stack grows with it.
#pragma once

#include <cstdint>
#include <deque>
#include <string_view>

#include "refhost/syntax/mistaken_words.h"
#include "refhost/syntax/open_blocks.h"
#include "refhost/syntax/span.h"
#include "refhost/syntax/token_queue.h"
#include "refhost/syntax/unsupported.h"

namespace refhost {

class ExpectedTokens;
class SyntaxErrors;

class TokenStream {
 public:
  TokenStream(std::string_view text, SyntaxErrors& errors);

  int next(Span& span);

  // The parser could not go on at `found`, the token delivered last: reports a construct that is
  // not supported, if it is part of one, and returns true. Leads the parser to where it can go on.
  bool refuses(Span found, const ExpectedTokens& expected);
  // Behind a mistake in a header the parser goes on with what it has found.
  void goesOn() { discards_ = false; }

 private:
  // Words: what they are where they stand.
  void takeWord(Token& token);
  int kindHere(const Token& token) const;
  bool inConfiguration() const;
  bool beginsInstance();

  // The kind of the token that the source lacks in front of `token`; 0 for none. Each reports it
  // and follows it in the state of the blocks.
  int missingBefore(const Token& token);
  int missingBeforeOpener(const Token& token);
  int missingBeforeCloser(const Token& token);
  int missingBeforeElse(const Token& token);
  int missingBeforeName(const Token& token);
  int missingBeforeType(const Token& token);
  int missingHeaderEnd(const Token& token);
  int missingBeforeEnd(const Token& token);
  int closeTop(const Token& token);
  int closeUntil(const Construct* construct, const Token& token);

  // Each follows a token of the source in the state; returns its kind, or YYerror in place of it
  // and of what is skipped.
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
  Unsupported unsupported_;
  Token last_;               // delivered last
  std::deque<Token> again_;  // delivered before, and to be delivered once more
  bool recovering_ = false;  // behind a mistake, up to the next ';'
  bool discards_ = false;    // the parser throws last_ away, for it looks for a ';'
  Token held_;               // the token after those that were put in
  bool holding_ = false;     // held_ is yet to be delivered
  bool inHeader_ = false;    // of a FUNCTION, or in what its first statement begins with
  bool resumes_ = false;     // last_ begins or ends a block: the parser can go on there
  int brackets_ = 0;         // open in the statement at hand
  int prefixes_ = 0;         // signs and NOTs in a row
};

}  // namespace refhost
