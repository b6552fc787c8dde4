// The errors of one file as the scanner, the token stream and the parser find them.
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "refhost/messages.h"
#include "refhost/syntax/span.h"

namespace refhost {

class SyntaxErrors {
 public:
  SyntaxErrors(std::string_view text, std::uint32_t file, std::vector<vel::VELMessage>& messages);

  // What is wrong at a place, whatever else was said of it.
  void add(Span at, const MessageFormat& format, std::string_view argument);

  // A syntax error: `what` as part of a sentence. Nothing is said twice of one
  // place, nor of a place before the last error, since recovery comes by again.
  void syntax(Span at, std::string_view what);
  // The same for a token that is not the `expected` one.
  void unexpected(Span found, std::string_view expected);

  // In place of a syntax error: a construct that is not supported.
  void notSupported(Span at, std::string_view construct);

  // Said once until a unit begins.
  void tooDeep(Span at);
  void beginUnit() { tooDeepSaid_ = false; }

  // No syntax error is reported before `offset` from now on.
  void muteUntil(std::uint32_t offset);
  // No syntax error is reported any more: the rest of the file was not understood.
  void mute() { muteUntil(std::numeric_limits<std::uint32_t>::max()); }
  bool reportedSince(std::uint32_t offset) const { return nextOffset_ > offset; }
  // So many errors were found that the rest of the file is not worth reading.
  bool exhausted() const { return count_ >= kMaxErrors; }

 private:
  static constexpr int kMaxErrors = 200;

  std::string_view text_;
  std::uint32_t file_;
  std::vector<vel::VELMessage>& messages_;
  std::uint32_t nextOffset_ = 0;  // the first place of which an error may be reported
  int count_ = 0;
  bool tooDeepSaid_ = false;
};

}  // namespace refhost
