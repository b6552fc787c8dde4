// The changes that mend what messages are about.
#include <algorithm>
#include <utility>

#include "lsp/diagnostics.h"
#include "lsp/requests.h"
#include "refhost/editor/fixes.h"

namespace lsp {

namespace {

bool overlap(const refhost::SourceRange& range, vel::TextLocation begin, vel::TextLocation end) {
  return range.begin.file() == begin.file() && range.begin.offset() <= end.offset() &&
         begin.offset() <= range.begin.offset() + range.length;
}

// True unless the client asks for actions of other kinds only.
bool wantsFixes(const Json& params) {
  const Json context = params.value("context", Json::object());
  if (!context.contains("only")) return true;
  const Json& only = context["only"];
  return std::any_of(only.begin(), only.end(), [](const Json& kind) {
    return kind == "quickfix" || (kind.is_string() && kind.get_ref<const std::string&>().empty());
  });
}

Json codeActions(const Analysed& analysed, const Json& params) {
  Json actions = Json::array();
  if (!wantsFixes(params)) return actions;
  const vel::TextLocation begin = analysed.place(positionFrom(params.at("range").at("start")));
  const vel::TextLocation end = analysed.place(positionFrom(params.at("range").at("end")));
  for (const refhost::Diagnostic& message : analysed.session().messages()) {
    if (!overlap(message.range, begin, end)) continue;
    std::vector<refhost::Fix> fixes = analysed.session().fixes(message);
    const bool warning = message.severity == refhost::Severity::Warning;
    if (warning) fixes.push_back(refhost::silencing(analysed.session().sources(), message));
    bool first = true;
    for (const refhost::Fix& fix : fixes) {
      actions.push_back({{"title", fix.title},
                         {"kind", "quickfix"},
                         {"diagnostics", Json::array({diagnosticOf(analysed, message)})},
                         {"isPreferred", std::exchange(first, false) && fix.likely},
                         {"edit", analysed.workspaceEdit(fix.edits)}});
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
