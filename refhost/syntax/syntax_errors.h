// Reports the errors that scanner, token stream and parser find in one file.
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "refhost/diagnostics.h"
#include "refhost/syntax/insertions.h"
#include "refhost/syntax/span.h"

namespace refhost {

class SyntaxErrors {
 public:
  SyntaxErrors(std::string_view text, std::uint32_t file, Diagnostics& messages);

  // These return what can be added to the message, null if it was not reported.

  // Reports an error even if another one has been reported at the place.
  Remarks* add(Span at, const MessageFormat& format, std::string_view argument);

  // Reports a syntax error; `what` completes the sentence. Nothing is reported at or before the
  // place of the last error, since error recovery reads those tokens again.
  Remarks* syntax(Span at, std::string_view what);
  // The same for a token that is not among the `expected` ones.
  Remarks* unexpected(Span found, std::string_view expected);

  // Adds that `keyword` was probably meant by `words`.
  void propose(Remarks& said, Span words, std::string_view keyword) const;

  // Adds a fix, which inserts `word`, that the message reports as missing.
  void insert(Remarks& said, std::string_view word, Insertion insertion) const;

  void warn(Span at, const MessageFormat& format, std::string_view argument) {
    messages_.report(rangeOf(at), format, {argument});
  }
  void silence(Span part, std::vector<unsigned int> warnings) {
    messages_.silence({file_, part.begin, part.end, std::move(warnings)});
  }

  // Reports, instead of a syntax error, that a construct is not supported.
  void notSupported(Span at, std::string_view construct);

  // The range of the file, for a note.
  SourceRange rangeOf(Span span) const;

  // Reports nesting that is too deep, once for each unit.
  void tooDeep(Span at);
  void beginUnit() {
    tooDeepSaid_ = false;
    incomplete_ = false;
    reportedInUnit_ = false;
  }
  bool reportedInUnit() const { return reportedInUnit_; }

  // A part of the unit, or the whole unit `name`, is not supported or could not be parsed.
  void refusePart() { incomplete_ = true; }
  void refuseUnit(std::string_view name) { refused_.push_back(name); }
  // Declarations outside of units could not be parsed, or those of a whole unit.
  void refuseDeclarations() { declarationsMissing_ = true; }
  bool declarationsMissing() const { return declarationsMissing_; }
  bool isIncomplete() const { return incomplete_; }
  const std::vector<std::string_view>& refusedUnits() const { return refused_; }

  // From now on no syntax error before `offset` is reported.
  void muteUntil(std::uint32_t offset);
  // The same up to the ';' at or behind `offset`, but not beyond its line.
  void muteDeclaration(std::uint32_t offset);
  // From now on no syntax error is reported.
  void mute() { muteUntil(std::numeric_limits<std::uint32_t>::max()); }
  bool reportedSince(std::uint32_t offset) const { return nextOffset_ > offset; }
  // True after so many errors that the rest of the file is not parsed.
  bool exhausted() const { return count_ >= kMaxErrors; }

 private:
  static constexpr int kMaxErrors = 200;

  std::string_view text_;
  std::uint32_t file_;
  Diagnostics& messages_;
  std::uint32_t nextOffset_ = 0;  // the first offset at which an error may be reported
  int count_ = 0;
  bool tooDeepSaid_ = false;
  bool incomplete_ = false;
  bool reportedInUnit_ = false;
  bool declarationsMissing_ = false;
  std::vector<std::string_view> refused_;
};

}  // namespace refhost
