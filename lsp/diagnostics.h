// Messages of the analysis as diagnostics of the protocol, and their fixes as code actions.
#pragma once

#include <map>
#include <string>

#include "lsp/analysed.h"

namespace lsp {

class Rpc;
class Workspace;

// By path; those of files without messages are empty lists.
std::map<std::string, Json> diagnosticsByFile(const Analysed& analysed);
// The faults of a velops.json.
Json diagnosticsOf(const refhost::SourceManager& source,
                   const std::vector<refhost::Diagnostic>& faults, Encoding encoding);

// Adds textDocument/codeAction.
void addCodeActions(Rpc& rpc, Workspace& workspace, Json& capabilities);

}  // namespace lsp
