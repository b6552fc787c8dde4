// Formats diagnostics for users.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/colours.h"
#include "refhost/diagnostic.h"
#include "refhost/syntax/source.h"

namespace velc {

// "error" or "warning".
const char* severityText(const refhost::Diagnostic& message);
// "0xC0040".
std::string codeText(const refhost::Diagnostic& message);

// `FILE:LINE:COL: error: TEXT [0xC0040]` and an excerpt of the source, then `FILE:LINE:COL: note:
// TEXT` with an excerpt for each note. Each line ends in a newline. A message about a velops.json
// has no code.
std::string diagnosticText(const refhost::SourceManager& sources,
                           const refhost::Diagnostic& message, const Colours& colours = {});

// The same as one JSON object on one line: file, line, column, endLine, endColumn, severity, code,
// message, notes and fixes.
std::string diagnosticJson(const refhost::SourceManager& sources,
                           const refhost::Diagnostic& message);

// The messages behind those that are printed.
struct Omitted {
  std::size_t first = 0;  // the index of the first one
  std::size_t errors = 0;
  std::size_t warnings = 0;

  bool any() const { return errors + warnings != 0; }
  std::string text() const;
};
// Those of `messages` behind error `maxErrors`, counted from index `first` on; none for 0.
Omitted omitted(const std::vector<refhost::Diagnostic>& messages, std::size_t first,
                std::size_t maxErrors);

// What Omitted tells, as a line of its own in the form of diagnosticText() or diagnosticJson().
std::string omittedText(const Omitted& rest);
std::string omittedJson(const Omitted& rest);

// Messages of any number of files, whether they are printed or not.
struct Tally {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t files = 0;      // that were checked
  std::size_t withFault = 0;  // those of them that messages are about

  // Adds the messages from index `first` on.
  void add(const std::vector<refhost::Diagnostic>& messages, std::size_t first);
};
// `2 errors, 1 warning in 1 of 3 files` and a newline; empty if there is no message, or only one
// about the only file.
std::string tallyText(const Tally& tally, const Colours& colours);

// A range in lines and columns; `end` is the place of the first character behind it.
struct Region {
  refhost::LineColumn begin;
  refhost::LineColumn end;
};
Region regionOf(const refhost::SourceManager& sources, const refhost::SourceRange& range);

}  // namespace velc
