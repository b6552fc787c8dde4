// Diagnostics for code-scanning services.
#pragma once

#include <string>
#include <vector>

#include "host/message.h"
#include "refhost/syntax/source.h"

namespace velc {

// One run of velc with these messages as a log in the Static Analysis Results
// Interchange Format, SARIF 2.1.0. Each code is a rule, explained by its page.
std::string sarifLog(const refhost::SourceManager& sources,
                     const std::vector<vel::VELMessage>& messages);

}  // namespace velc
