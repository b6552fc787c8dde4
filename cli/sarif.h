// Diagnostics for code-scanning services.
#pragma once

#include <string>
#include <vector>

#include "host/message.h"
#include "refhost/syntax/source.h"

namespace velc {

// A log in the Static Analysis Results Interchange Format, SARIF 2.1.0, with one run of velc and
// its messages. Each message code is a rule, with its page as explanation.
std::string sarifLog(const refhost::SourceManager& sources,
                     const std::vector<vel::VELMessage>& messages);

}  // namespace velc
