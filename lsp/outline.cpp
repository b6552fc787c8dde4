// Symbols of documents and of all files, and what can be folded.
#include "refhost/editor/outline.h"

#include <algorithm>
#include <map>
#include <optional>

#include "lsp/requests.h"
#include "refhost/editor/folding.h"

namespace lsp {

namespace {

// The numbers of the protocol.
int kindNumber(refhost::SymbolKind kind, bool constant) {
  using Kind = refhost::SymbolKind;
  constexpr int kModule = 2, kNamespace = 3, kPackage = 4, kClass = 5, kMethod = 6, kProperty = 7,
                kField = 8, kEnum = 10, kFunction = 12, kVariable = 13, kConstant = 14,
                kObject = 19, kEnumMember = 22, kStruct = 23, kEvent = 24, kOperator = 25,
                kTypeParameter = 26;
  switch (kind) {
    case Kind::Program:
      return kModule;
    case Kind::Function:
    case Kind::StandardFunction:
      return kFunction;
    case Kind::FunctionBlock:
      return kClass;
    case Kind::Setup:
    case Kind::Test:
    case Kind::Teardown:
      return kMethod;
    case Kind::Structure:
      return kStruct;
    case Kind::Enumeration:
      return kEnum;
    case Kind::Type:
    case Kind::ElementaryType:
      return kTypeParameter;
    case Kind::Member:
      return kField;
    case Kind::Value:
      return kEnumMember;
    case Kind::Input:
    case Kind::Output:
    case Kind::InOut:
      return kProperty;
    case Kind::Variable:
    case Kind::Temporary:
    case Kind::Global:
      return constant ? kConstant : kVariable;
    case Kind::Configuration:
      return kNamespace;
    case Kind::Resource:
      return kPackage;
    case Kind::Task:
      return kEvent;
    case Kind::Instance:
      return kObject;
    case Kind::Operator:
      return kOperator;
  }
  return kVariable;
}

// A name may not be empty.
std::string nameOf(const refhost::OutlineItem& item) {
  return item.name.empty() ? "''" : item.name;
}

Json symbolsOf(const Analysed& analysed, const std::vector<refhost::OutlineItem>& items) {
  Json all = Json::array();
  for (const refhost::OutlineItem& item : items) {
    Json& symbol = all.emplace_back();
    symbol = {{"name", nameOf(item)},
              {"kind", kindNumber(item.kind, item.constant)},
              {"range", analysed.range(item.range)},
              {"selectionRange", analysed.range(item.nameRange)},
              {"children", symbolsOf(analysed, item.parts)}};
    if (!item.detail.empty()) symbol["detail"] = item.detail;
  }
  return all;
}

// As SymbolInformation, for clients that take no trees.
void addFlat(const Analysed& analysed, const std::vector<refhost::OutlineItem>& items,
             const std::string& container, Json& all) {
  for (const refhost::OutlineItem& item : items) {
    Json& symbol = all.emplace_back();
    symbol = {{"name", nameOf(item)},
              {"kind", kindNumber(item.kind, item.constant)},
              {"location", analysed.location(item.range)}};
    if (!container.empty()) symbol["containerName"] = container;
    addFlat(analysed, item.parts, nameOf(item), all);
  }
}

Json documentSymbols(const Analysed& analysed, const Json& /*params*/) {
  const auto items = refhost::outlineOf(analysed.session().view(), analysed.file());
  if (analysed.client().symbolTrees) return symbolsOf(analysed, items);
  Json all = Json::array();
  addFlat(analysed, items, {}, all);
  return all;
}

// Those of files that are in no program.
void addOthers(Workspace& workspace, const std::string& query, Json& all) {
  struct File {
    std::string text;
    std::optional<Lines> lines;
  };
  std::map<std::string, File> files;
  const Documents& documents = workspace.documents();
  for (const refhost::FileDeclaration* const found :
       refhost::findDeclarations(workspace.declaredElsewhere(), query)) {
    File& file = files[found->file];
    if (!file.lines) {
      if (!workspace.readText(found->file, file.text)) continue;
      file.lines.emplace(file.text, documents.client.encoding);
    }
    const Position begin = file.lines->position(found->offset);
    const Position end = file.lines->position(found->offset + found->length);
    Json& symbol = all.emplace_back();
    symbol = {{"name", found->name},
              {"kind", kindNumber(found->kind, false)},
              {"location",
               {{"uri", documents.uriOf(found->file)},
                {"range", {{"start", toJson(begin)}, {"end", toJson(end)}}}}}};
    if (!found->container.empty()) symbol["containerName"] = found->container;
  }
}

Json workspaceSymbols(Workspace& workspace, const std::string& query) {
  Json all = Json::array();
  workspace.forEachProgram([&](const Analysed& analysed) {
    for (const refhost::FoundSymbol& found :
         refhost::findSymbols(analysed.session().view(), query)) {
      Json symbol = {{"name", found.name},
                     {"kind", kindNumber(found.kind, false)},
                     {"location", analysed.location(found.range)}};
      if (!found.container.empty()) symbol["containerName"] = found.container;
      // Several documents may have a file beside them in common.
      if (std::find(all.begin(), all.end(), symbol) == all.end()) all.push_back(std::move(symbol));
    }
  });
  addOthers(workspace, query, all);
  return all;
}

Json foldingRanges(const Analysed& analysed, const Json& /*params*/) {
  using Kind = refhost::FoldingRange::Kind;
  Json all = Json::array();
  for (const refhost::FoldingRange& range :
       refhost::foldingRangesOf(analysed.session().view(), analysed.file())) {
    Json& folding = all.emplace_back();
    folding = {{"startLine", range.firstLine - 1}, {"endLine", range.lastLine - 1}};
    if (range.kind != Kind::Code) {
      folding["kind"] = range.kind == Kind::Comment ? "comment" : "region";
    }
  }
  return all;
}

}  // namespace

void addOutline(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  for (const char* provider :
       {"documentSymbolProvider", "workspaceSymbolProvider", "foldingRangeProvider"}) {
    capabilities[provider] = true;
  }
  onDocument(rpc, workspace, "textDocument/documentSymbol", documentSymbols);
  onDocument(rpc, workspace, "textDocument/foldingRange", foldingRanges);
  capabilities["workspace"]["workspaceFolders"] = {{"supported", true},
                                                   {"changeNotifications", true}};
  rpc.onNotification("workspace/didChangeWorkspaceFolders",
                     [&workspace](const Json& params) { workspace.folders.didChange(params); });
  rpc.onRequest("workspace/symbol", [&workspace](const Json& params) {
    return workspaceSymbols(workspace, params.at("query"));
  });
}

}  // namespace lsp
