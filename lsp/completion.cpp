#include "refhost/editor/completion.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/uri.h"
#include "hostkit/folding.h"
#include "lsp/documentation.h"
#include "lsp/requests.h"

namespace lsp {

namespace {

// The numbers of the protocol.
int kindNumber(refhost::Proposal::Kind kind) {
  using Kind = refhost::Proposal::Kind;
  constexpr int kFunction = 3, kField = 5, kVariable = 6, kClass = 7, kInterface = 8, kModule = 9,
                kProperty = 10, kEnum = 13, kKeyword = 14, kSnippet = 15, kReference = 18,
                kEnumMember = 20, kConstant = 21, kStruct = 22, kEvent = 23, kOperator = 24;
  switch (kind) {
    case Kind::Variable:
      return kVariable;
    case Kind::Constant:
      return kConstant;
    case Kind::Member:
      return kField;
    case Kind::Argument:
      return kProperty;
    case Kind::Value:
      return kEnumMember;
    case Kind::Function:
      return kFunction;
    case Kind::Operator:
      return kOperator;
    case Kind::Block:
      return kClass;
    case Kind::Program:
      return kModule;
    case Kind::Type:
      return kInterface;
    case Kind::Structure:
      return kStruct;
    case Kind::Enumeration:
      return kEnum;
    case Kind::Task:
      return kEvent;
    case Kind::Instance:
      return kReference;
    case Kind::Keyword:
      return kKeyword;
    case Kind::Snippet:
      break;
  }
  return kSnippet;
}

// By which the documentation is found when the client asks for it: a topic, or the document and the
// place of a declaration in its program or in another file.
Json dataOf(const Analysed& analysed, const refhost::Proposal& proposal, const std::string& uri) {
  if (!proposal.topic.empty()) return proposal.topic;
  if (proposal.other != nullptr) {
    return {uri, velc::fileUri(proposal.other->file), proposal.other->offset};
  }
  if (proposal.id == refhost::kNoSymbol) return nullptr;
  const refhost::SymbolInfo& symbol = analysed.session().view().symbols()[proposal.id];
  const vel::TextLocation place = symbol.nameRange.begin;
  if (!symbol.isDeclared() || !analysed.isFile(place.file())) return nullptr;
  return {uri, place.file(), place.offset()};
}

Json completion(Workspace& workspace, const Analysed& analysed, const Json& params) {
  constexpr int kSnippetFormat = 2;
  const vel::TextLocation place = placeIn(analysed, params);
  const auto found =
      refhost::completionAt(analysed.session().view(), place, analysed.client().snippets,
                            workspace.declaredBeside(pathIn(params)));
  // A bracket or a comma brings the names of arguments and nothing else, so that the list does not
  // stand in the way of those who do without. EN and ENO alone are no reason for a list.
  const Json trigger = params.value(Json::json_pointer("/context/triggerCharacter"), Json());
  const bool namesOnly = trigger == "(" || trigger == ",";
  const std::string uri = params.at("textDocument").at("uri");
  if (namesOnly && (!found.parameters || (trigger == "," && found.positional))) {
    return {{"isIncomplete", false}, {"items", Json::array()}};
  }
  const std::uint32_t begin = found.replaced.begin.offset();
  Json ranges = {{"range", analysed.range(found.replaced)}};
  if (analysed.client().insertions && place.offset() < begin + found.replaced.length) {
    ranges = {{"insert", analysed.range({found.replaced.begin, place.offset() - begin})},
              {"replace", std::move(ranges["range"])}};
  }
  Json items = Json::array();
  for (const refhost::Proposal& proposal : found.proposals) {
    if (namesOnly && proposal.kind != refhost::Proposal::Kind::Argument) continue;
    // Arguments stay in the order of their declarations.
    const bool argument = proposal.kind == refhost::Proposal::Kind::Argument;
    const std::string sortText = argument ? fmt::format("{:02}{:03}", proposal.rank, items.size())
                                          : fmt::format("{:02}{}", proposal.rank, proposal.label);
    Json& item = items.emplace_back();
    item = {{"label", proposal.label},
            {"kind", kindNumber(proposal.kind)},
            {"sortText", sortText},
            {"textEdit", ranges}};
    item["textEdit"]["newText"] = proposal.text.empty() ? proposal.label : proposal.text;
    if (!proposal.detail.empty()) item["detail"] = proposal.detail;
    if (proposal.snippet) item["insertTextFormat"] = kSnippetFormat;
    Json data = dataOf(analysed, proposal, uri);
    if (!data.is_null()) item["data"] = std::move(data);
  }
  return {{"isIncomplete", found.incomplete}, {"items", std::move(items)}};
}

// The declaration may have moved since the list was made; then there is none.
std::string documentationAt(const Analysed& analysed, vel::TextLocation place,
                            const std::string& label) {
  const std::uint32_t file = place.file();
  const std::string_view text = analysed.session().sources().text(file);
  const auto offset = std::min<std::size_t>(place.offset(), text.size());
  // The label may be `Color#Red`, `level :=` or `pump(...)`.
  std::string_view name = std::string_view(label).substr(label.find('#') + 1);
  name = name.substr(0, name.find_first_of(" ("));
  if (!vel::equalIgnoringCase(text.substr(offset, name.size()), name)) return {};
  const auto hover = refhost::hoverAt(analysed.session().view(),
                                      vel::TextLocation(file, static_cast<std::uint32_t>(offset)));
  return hover ? documentationOf(*hover) : std::string();
}

std::string documentation(Workspace& workspace, const Json& data, const std::string& label) {
  if (data.is_string()) return pageOf(data.get<std::string>());
  const std::string document = velc::pathOfUri(data.at(0).get<std::string>());
  const Json& where = data.at(1);
  const auto offset = data.at(2).get<std::uint32_t>();
  std::string text;
  if (where.is_string()) {
    const std::string path = velc::pathOfUri(where.get<std::string>());
    workspace.forEachOther(
        document, path, [&](const std::string& file, const std::string&) { return file == path; },
        [&](const Analysed& other) {
          text = documentationAt(other, vel::TextLocation(other.file(), offset), label);
        });
    return text;
  }
  const auto analysed = workspace.analysed(document);
  const auto file = where.get<std::uint32_t>();
  if (!analysed || !analysed->isFile(file)) return {};
  return documentationAt(*analysed, vel::TextLocation(file, offset), label);
}

}  // namespace

void addCompletion(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  capabilities["completionProvider"] = {{"triggerCharacters", {".", "#", "(", ","}},
                                        {"resolveProvider", true}};
  onDocument(rpc, workspace, "textDocument/completion",
             [&workspace](const Analysed& analysed, const Json& params) {
               return completion(workspace, analysed, params);
             });
  rpc.onRequest("completionItem/resolve", [&workspace](const Json& params) {
    Json item = params;
    const auto data = item.find("data");
    if (data == item.end()) return item;
    const std::string text = documentation(workspace, *data, item.at("label"));
    const bool markdown = workspace.documents().client.completionMarkdown;
    if (!text.empty()) item["documentation"] = markup(markdown, text);
    return item;
  });
}

}  // namespace lsp
