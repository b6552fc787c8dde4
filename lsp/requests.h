// The families of requests. Each function adds some to the dispatcher, and what they offer to the
// capabilities of the server.
#pragma once

#include <functional>

#include "lsp/analysed.h"
#include "lsp/rpc.h"
#include "lsp/workspace.h"

namespace lsp {

void addCodeActions(Rpc& rpc, Workspace& workspace, Json& capabilities);
void addCompletion(Rpc& rpc, Workspace& workspace, Json& capabilities);
void addNavigation(Rpc& rpc, Workspace& workspace, Json& capabilities);
void addRename(Rpc& rpc, Workspace& workspace, Json& capabilities);
void addOutline(Rpc& rpc, Workspace& workspace, Json& capabilities);
void addFormatting(Rpc& rpc, Workspace& workspace, Json& capabilities);
void addSemanticTokens(Rpc& rpc, Workspace& workspace, Json& capabilities);
void addSignatureHelp(Rpc& rpc, Workspace& workspace, Json& capabilities);
void addHover(Rpc& rpc, Workspace& workspace, Json& capabilities);

// Adds a request about a document. The result is null if the document cannot be analysed.
using DocumentRequest = std::function<Json(const Analysed& analysed, const Json& params)>;
void onDocument(Rpc& rpc, Workspace& workspace, const char* method, DocumentRequest handle);

// The place that `params` name in `position`.
inline vel::TextLocation placeIn(const Analysed& analysed, const Json& params) {
  return analysed.place(positionFrom(params.at("position")));
}

}  // namespace lsp
