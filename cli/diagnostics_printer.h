// Formats diagnostics for users.
#pragma once

#include <string>

#include "host/message.h"
#include "refhost/syntax/source.h"

namespace velc {

// "error" or "warning".
const char* severityText(const vel::VELMessage& message);
// "0xC0040".
std::string codeText(const vel::VELMessage& message);

// `FILE:LINE:COL: error: TEXT [0xC0040]`, the source line, and a caret under the
// column. Each line ends in a newline.
std::string diagnosticText(const refhost::SourceManager& sources, const vel::VELMessage& message);

// The same as one JSON object on one line: file, line, column, severity, code,
// message.
std::string diagnosticJson(const refhost::SourceManager& sources, const vel::VELMessage& message);

}  // namespace velc
