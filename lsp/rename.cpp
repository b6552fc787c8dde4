#include "refhost/editor/rename.h"

#include "lsp/requests.h"

namespace lsp {

namespace {

void refuse(const std::string& refusal) {
  if (!refusal.empty()) throw RequestError(ErrorCode::RequestFailed, refusal);
}

Json prepare(const Analysed& analysed, const Json& params) {
  const refhost::Renameable found =
      refhost::renameableAt(analysed.session().view(), placeIn(analysed, params));
  refuse(found.refusal);
  return {{"range", analysed.range(found.range)}, {"placeholder", found.name}};
}

Json rename(const Analysed& analysed, const Json& params) {
  const std::string name = params.at("newName");
  const refhost::Renaming renaming =
      refhost::renamed(analysed.session().view(), placeIn(analysed, params), name);
  refuse(renaming.refusal);
  return analysed.workspaceEdit(renaming.edits);
}

}  // namespace

void addRename(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  capabilities["renameProvider"] = {{"prepareProvider", true}};
  onDocument(rpc, workspace, "textDocument/prepareRename", prepare);
  onDocument(rpc, workspace, "textDocument/rename", rename);
}

}  // namespace lsp
