#include "refhost/editor/hover.h"

#include "lsp/documentation.h"
#include "lsp/requests.h"

namespace lsp {

namespace {

Json hover(const Analysed& analysed, const Json& params) {
  const auto found = refhost::hoverAt(analysed.session().view(), placeIn(analysed, params));
  if (!found) return nullptr;
  const std::string text = documentationOf(*found);
  if (text.empty()) return nullptr;
  return {{"contents", markup(analysed.client().hoverMarkdown, text)},
          {"range", analysed.range(found->range)}};
}

}  // namespace

void addHover(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  capabilities["hoverProvider"] = true;
  onDocument(rpc, workspace, "textDocument/hover", hover);
}

}  // namespace lsp
