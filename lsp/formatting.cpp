// The one style for documents, or for some of their lines.
#include <limits>

#include "lsp/requests.h"
#include "refhost/format/format.h"

namespace lsp {

namespace {

// The changes in the lines from `first` to `last`, counted from 0. Null for a document with errors
// of syntax: they are shown in it already, and many editors format whenever they save.
Json changes(const Documents& documents, const Json& params, std::uint32_t first,
             std::uint32_t last) {
  const Document* const document = documents.find(pathIn(params));
  if (document == nullptr) return nullptr;
  refhost::SourceManager sources;
  sources.add(document->path, document->text);
  const refhost::Formatting formatting = refhost::formatSource(sources, 0);
  if (!formatting.errors.empty()) return nullptr;
  const Lines lines(sources.text(0), documents.encoding, sources.byteOrderMark(0));
  Json edits = Json::array();
  for (const refhost::LayoutEdit& edit : formatting.edits) {
    const Position begin = lines.position(edit.range.begin);
    const Position end = lines.position(edit.range.end);
    if (end.line < first || begin.line > last) continue;
    edits.push_back(
        {{"range", {{"start", toJson(begin)}, {"end", toJson(end)}}}, {"newText", edit.text}});
  }
  return edits;
}

Json rangeChanges(const Documents& documents, const Json& params) {
  const Position begin = positionFrom(params.at("range").at("start"));
  const Position end = positionFrom(params.at("range").at("end"));
  // A range of whole lines ends at the begin of the next one.
  const bool whole = end.character == 0 && end.line > begin.line;
  return changes(documents, params, begin.line, whole ? end.line - 1 : end.line);
}

}  // namespace

void addFormatting(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  capabilities["documentFormattingProvider"] = true;
  capabilities["documentRangeFormattingProvider"] = true;
  const Documents& documents = workspace.documents();
  rpc.onRequest("textDocument/formatting", [&documents](const Json& params) {
    return changes(documents, params, 0, std::numeric_limits<std::uint32_t>::max());
  });
  rpc.onRequest("textDocument/rangeFormatting",
                [&documents](const Json& params) { return rangeChanges(documents, params); });
}

}  // namespace lsp
