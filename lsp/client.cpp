#include "lsp/client.h"

#include <algorithm>

namespace lsp {

namespace {

class Capabilities {
 public:
  explicit Capabilities(const Json& params)
      : all_(params.is_object() ? params.value("capabilities", Json()) : Json()) {}

  Json at(const char* pointer) const {
    return all_.is_object() ? all_.value(Json::json_pointer(pointer), Json()) : Json();
  }
  bool has(const char* pointer) const { return at(pointer) == Json(true); }
  bool lists(const char* pointer, const char* wanted) const {
    const Json list = at(pointer);
    return std::find(list.begin(), list.end(), wanted) != list.end();
  }
  // Without a list of formats the client is taken for one that shows Markdown.
  bool takesMarkdown(const char* pointer) const {
    return at(pointer).empty() || lists(pointer, "markdown");
  }

 private:
  Json all_;
};

std::string withoutFences(const std::string& markdown) {
  std::string text;
  for (std::size_t at = 0; at < markdown.size();) {
    const std::size_t end = std::min(markdown.find('\n', at), markdown.size() - 1) + 1;
    if (markdown.compare(at, 3, "```") != 0) text.append(markdown, at, end - at);
    at = end;
  }
  return text;
}

}  // namespace

Client clientFrom(const Json& params) {
  const Capabilities can(params);
  Client client;
  if (can.lists("/general/positionEncodings", "utf-8")) client.encoding = Encoding::Utf8;
  client.snippets = can.has("/textDocument/completion/completionItem/snippetSupport");
  client.insertions = can.has("/textDocument/completion/completionItem/insertReplaceSupport");
  client.labelOffsets = can.has(
      "/textDocument/signatureHelp/signatureInformation/parameterInformation/labelOffsetSupport");
  client.symbolTrees = can.has("/textDocument/documentSymbol/hierarchicalDocumentSymbolSupport");
  client.preparesRenaming = can.has("/textDocument/rename/prepareSupport");
  client.relatedPlaces = can.has("/textDocument/publishDiagnostics/relatedInformation");
  client.codeLinks = can.has("/textDocument/publishDiagnostics/codeDescriptionSupport");
  client.tags = !can.at("/textDocument/publishDiagnostics/tagSupport").empty();
  client.watchesFiles = can.has("/workspace/didChangeWatchedFiles/dynamicRegistration");
  client.hoverMarkdown = can.takesMarkdown("/textDocument/hover/contentFormat");
  client.completionMarkdown =
      can.takesMarkdown("/textDocument/completion/completionItem/documentationFormat");
  client.signatureMarkdown =
      can.takesMarkdown("/textDocument/signatureHelp/signatureInformation/documentationFormat");
  return client;
}

Json markup(bool takesMarkdown, const std::string& markdown) {
  if (takesMarkdown) return {{"kind", "markdown"}, {"value", markdown}};
  return {{"kind", "plaintext"}, {"value", withoutFences(markdown)}};
}

}  // namespace lsp
