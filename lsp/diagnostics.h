// Messages of the analysis as diagnostics of the protocol.
#pragma once

#include <map>
#include <string>

#include "lsp/analysed.h"

namespace lsp {

Json diagnosticOf(const Analysed& analysed, const refhost::Diagnostic& message);
// By path; those of files without messages are empty lists.
std::map<std::string, Json> diagnosticsByFile(const Analysed& analysed);
// The faults of a velops.json.
Json diagnosticsOf(const refhost::SourceManager& source,
                   const std::vector<refhost::Diagnostic>& faults, const Client& client);

}  // namespace lsp
