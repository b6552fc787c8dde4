// From names to declarations and back.
#include "refhost/editor/navigation.h"

#include "lsp/requests.h"

namespace lsp {

namespace {

Json locationOf(const Analysed& analysed, const std::optional<refhost::SourceRange>& range) {
  return range ? analysed.location(*range) : Json();
}

Json references(const Analysed& analysed, const Json& params) {
  const bool withDeclaration = params.at("context").at("includeDeclaration");
  Json all = Json::array();
  for (const refhost::SourceRange& range : refhost::referencesAt(
           analysed.session().view(), placeIn(analysed, params), withDeclaration)) {
    all.push_back(analysed.location(range));
  }
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
  onDocument(rpc, workspace, "textDocument/references", references);
  onDocument(rpc, workspace, "textDocument/documentHighlight", highlights);
}

}  // namespace lsp
