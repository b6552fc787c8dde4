#include "lsp/requests.h"

namespace lsp {

void onDocument(Rpc& rpc, Workspace& workspace, const char* method, DocumentRequest handle) {
  rpc.onRequest(method, [&workspace, handle = std::move(handle)](const Json& params) {
    const auto analysed = workspace.analysed(pathIn(params));
    return analysed ? handle(*analysed, params) : Json();
  });
}

}  // namespace lsp
