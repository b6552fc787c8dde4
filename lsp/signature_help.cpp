#include "refhost/editor/signature_help.h"

#include "lsp/documentation.h"
#include "lsp/requests.h"

namespace lsp {

namespace {

Json signatureHelp(const Analysed& analysed, const Json& params) {
  const auto help = refhost::signatureAt(analysed.session().view(), placeIn(analysed, params));
  if (!help) return nullptr;
  const Client& client = analysed.client();
  // Labels are counted in UTF-16 whatever positions are.
  const Lines lines(help->label, Encoding::Utf16);
  Json parameters = Json::array();
  for (const refhost::SignatureHelp::Parameter& parameter : help->parameters) {
    Json& label = parameters.emplace_back();
    const auto [begin, end] = parameter.label;
    if (client.labelOffsets) {
      label["label"] = {lines.position(begin).character, lines.position(end).character};
    } else {
      label["label"] = help->label.substr(begin, end - begin);
    }
    if (!parameter.comment.empty()) {
      label["documentation"] = markup(client.signatureMarkdown, parameter.comment);
    }
  }
  Json signature = {{"label", help->label}, {"parameters", std::move(parameters)}};
  const std::string text = help->topic.empty() ? help->comment : summaryOf(help->topic);
  if (!text.empty()) signature["documentation"] = markup(client.signatureMarkdown, text);
  // One behind the last stands for none.
  const std::size_t active = help->active.value_or(help->parameters.size());
  return {{"signatures", Json::array({std::move(signature)})},
          {"activeSignature", 0},
          {"activeParameter", active}};
}

}  // namespace

void addSignatureHelp(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  capabilities["signatureHelpProvider"] = {{"triggerCharacters", {"(", ","}},
                                           {"retriggerCharacters", {")", "="}}};
  onDocument(rpc, workspace, "textDocument/signatureHelp", signatureHelp);
}

}  // namespace lsp
