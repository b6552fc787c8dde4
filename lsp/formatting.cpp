// The one style for documents, or for some of their lines.
#include <filesystem>
#include <optional>

#include "cli/project.h"
#include "lsp/requests.h"
#include "refhost/format/format.h"

namespace lsp {

namespace {

bool isProjectFile(const std::string& path) {
  return std::filesystem::path(path).filename() == velc::kProjectFile;
}

struct Range {
  Position begin;
  Position end;
};

// The changes in a range, or all of them. Null for a document with errors of syntax: they are shown
// in it already, and many editors format whenever they save.
Json changes(const Documents& documents, const Json& params, std::optional<Range> range) {
  const Document* const document = documents.find(pathIn(params));
  if (document == nullptr || isProjectFile(document->path)) return nullptr;
  refhost::SourceManager sources;
  sources.add(document->path, document->text);
  const Lines lines(sources.text(0), documents.client.encoding, sources.byteOrderMark(0));
  std::optional<refhost::Span> span;
  if (range) {
    const auto offset = [&](Position at) { return static_cast<std::uint32_t>(lines.offset(at)); };
    span = {offset(range->begin), offset(range->end)};
    // A range of whole lines ends at the begin of the next one.
    if (range->end.character == 0 && span->end > span->begin) --span->end;
  }
  const refhost::Formatting formatting = refhost::formatSource(sources, 0, span);
  if (!formatting.errors.empty()) return nullptr;
  Json edits = Json::array();
  for (const refhost::LayoutEdit& edit : formatting.edits) {
    const Position begin = lines.position(edit.range.begin);
    const Position end = lines.position(edit.range.end);
    edits.push_back(
        {{"range", {{"start", toJson(begin)}, {"end", toJson(end)}}}, {"newText", edit.text}});
  }
  return edits;
}

}  // namespace

void addFormatting(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  capabilities["documentFormattingProvider"] = true;
  capabilities["documentRangeFormattingProvider"] = true;
  const Documents& documents = workspace.documents();
  rpc.onRequest("textDocument/formatting", [&documents](const Json& params) {
    return changes(documents, params, std::nullopt);
  });
  rpc.onRequest("textDocument/rangeFormatting", [&documents](const Json& params) {
    const Json& range = params.at("range");
    return changes(documents, params,
                   Range{positionFrom(range.at("start")), positionFrom(range.at("end"))});
  });
}

}  // namespace lsp
