// From names to declarations and back.
#include "refhost/editor/navigation.h"

#include <set>

#include "lsp/requests.h"
#include "lsp/uses.h"

namespace lsp {

namespace {

Json locationOf(const Analysed& analysed, const std::optional<refhost::SourceRange>& range) {
  return range ? analysed.location(*range) : Json();
}

Json references(Workspace& workspace, const Json& params) {
  const std::string document = pathIn(params);
  const auto analysed = workspace.analysed(document);
  if (!analysed) return nullptr;
  const bool withDeclaration = params.at("context").at("includeDeclaration");
  Json all = Json::array();
  std::set<Json> known;
  const auto add = [&](const Analysed& program, vel::TextLocation place) {
    for (const refhost::SourceRange& range :
         refhost::referencesAt(program.session().view(), place, withDeclaration)) {
      Json location = program.location(range);
      if (known.insert(location).second) all.push_back(std::move(location));
    }
  };
  const vel::TextLocation place = placeIn(*analysed, params);
  const auto declared = declaredAt(*analysed, place);
  add(*analysed, place);
  if (!declared) return all;
  forEachOtherProgram(workspace, document, *declared,
                      [&](const Analysed& program, std::optional<vel::TextLocation> declaration) {
                        if (declaration) add(program, *declaration);
                      });
  return all;
}

Json highlights(const Analysed& analysed, const Json& params) {
  constexpr int kRead = 2, kWrite = 3;
  Json all = Json::array();
  for (const refhost::Highlight& highlight :
       refhost::highlightsAt(analysed.session().view(), placeIn(analysed, params))) {
    all.push_back(
        {{"range", analysed.range(highlight.range)}, {"kind", highlight.writes ? kWrite : kRead}});
  }
  return all;
}

}  // namespace

void addNavigation(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  for (const char* provider : {"definitionProvider", "typeDefinitionProvider", "referencesProvider",
                               "documentHighlightProvider"}) {
    capabilities[provider] = true;
  }
  onDocument(
      rpc, workspace, "textDocument/definition", [](const Analysed& analysed, const Json& params) {
        return locationOf(
            analysed, refhost::definitionAt(analysed.session().view(), placeIn(analysed, params)));
      });
  onDocument(rpc, workspace, "textDocument/typeDefinition",
             [](const Analysed& analysed, const Json& params) {
               return locationOf(analysed, refhost::typeDefinitionAt(analysed.session().view(),
                                                                     placeIn(analysed, params)));
             });
  rpc.onRequest("textDocument/references",
                [&workspace](const Json& params) { return references(workspace, params); });
  onDocument(rpc, workspace, "textDocument/documentHighlight", highlights);
}

}  // namespace lsp
