// Formats diagnostics for users.
#pragma once

#include <string>

#include "refhost/diagnostic.h"
#include "refhost/syntax/source.h"

namespace velc {

// "error" or "warning".
const char* severityText(const refhost::Diagnostic& message);
// "0xC0040".
std::string codeText(const refhost::Diagnostic& message);

// `FILE:LINE:COL: error: TEXT [0xC0040]` and an excerpt of the source, then `FILE:LINE:COL: note:
// TEXT` with an excerpt for each note. Each line ends in a newline.
std::string diagnosticText(const refhost::SourceManager& sources,
                           const refhost::Diagnostic& message);

// The same as one JSON object on one line: file, line, column, endLine, endColumn, severity, code,
// message, notes and fixes.
std::string diagnosticJson(const refhost::SourceManager& sources,
                           const refhost::Diagnostic& message);

// A range in lines and columns; `end` is the place of the first character behind it.
struct Region {
  refhost::LineColumn begin;
  refhost::LineColumn end;
};
Region regionOf(const refhost::SourceManager& sources, const refhost::SourceRange& range);

}  // namespace velc
