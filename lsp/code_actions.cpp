// The changes that messages suggest.
#include <fmt/format.h>

#include "lsp/diagnostics.h"
#include "lsp/requests.h"

namespace lsp {

namespace {

bool overlap(const refhost::SourceRange& range, vel::TextLocation begin, vel::TextLocation end) {
  return range.begin.file() == begin.file() && range.begin.offset() <= end.offset() &&
         begin.offset() <= range.begin.offset() + range.length;
}

Json codeActions(const Analysed& analysed, const Json& params) {
  Json actions = Json::array();
  const vel::TextLocation begin = analysed.place(positionFrom(params.at("range").at("start")));
  const vel::TextLocation end = analysed.place(positionFrom(params.at("range").at("end")));
  for (const refhost::Diagnostic& message : analysed.session().messages()) {
    if (!overlap(message.range, begin, end)) continue;
    for (const refhost::Fix& fix : message.fixes) {
      const Json edits = Json::array({analysed.edit(fix.range, fix.replacement)});
      actions.push_back({{"title", fmt::format("Write '{}'", fix.replacement)},
                         {"kind", "quickfix"},
                         {"diagnostics", Json::array({diagnosticOf(analysed, message)})},
                         {"isPreferred", message.fixes.size() == 1},
                         {"edit", {{"changes", {{analysed.uri(fix.range.begin.file()), edits}}}}}});
    }
  }
  return actions;
}

}  // namespace

void addCodeActions(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  capabilities["codeActionProvider"] = {{"codeActionKinds", {"quickfix"}}};
  onDocument(rpc, workspace, "textDocument/codeAction", codeActions);
}

}  // namespace lsp
