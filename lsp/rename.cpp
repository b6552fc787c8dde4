#include "refhost/editor/rename.h"

#include <fmt/format.h>

#include <set>

#include "lsp/requests.h"
#include "lsp/uses.h"

namespace lsp {

namespace {

void refuse(const std::string& refusal) {
  if (!refusal.empty()) throw RequestError(ErrorCode::RequestFailed, refusal);
}

Json prepare(const Analysed& analysed, const Json& params) {
  const refhost::Renameable found =
      refhost::renameableAt(analysed.session().view(), placeIn(analysed, params));
  refuse(found.refusal);
  return {{"range", analysed.range(found.range)}, {"placeholder", found.name}};
}

// Names that files which are not in its program could use as well.
void refuseTaken(Workspace& workspace, const std::string& document, const Declared& declared,
                 const std::string& name) {
  using Kind = refhost::SymbolKind;
  const bool isFound = declared.kind <= Kind::FunctionBlock || declared.kind == Kind::Global ||
                       declared.kind == Kind::Value || refhost::isType(declared.kind);
  if (!isFound || vel::equalIgnoringCase(name, declared.name)) return;
  for (const std::string& path : workspace.filesAround(document, declared.path)) {
    const bool other = path != declared.path && !workspace.areOneProject(path, declared.path);
    if (other && workspace.declares(path, name)) {
      refuse(fmt::format("{} has a {} already", path, name));
    }
  }
}

// Files of other programs, too. The new name must fit in each of them.
Json rename(Workspace& workspace, const Json& params) {
  const std::string document = pathIn(params);
  const auto analysed = workspace.analysed(document);
  if (!analysed) return nullptr;
  const std::string name = params.at("newName");
  Json changes = Json::object();
  std::set<std::pair<std::string, Json>> known;
  const auto add = [&](const Analysed& program, vel::TextLocation place) {
    const refhost::Renaming renaming = refhost::renamed(program.session().view(), place, name);
    refuse(renaming.refusal);
    for (const refhost::TextEdit& edited : renaming.edits) {
      const std::string uri = program.uri(edited.range.begin.file());
      Json edit = program.edit(edited.range, edited.text);
      if (known.emplace(uri, edit).second) changes[uri].push_back(std::move(edit));
    }
  };
  const vel::TextLocation place = placeIn(*analysed, params);
  const auto declared = declaredAt(*analysed, place);
  add(*analysed, place);
  if (!declared) return {{"changes", std::move(changes)}};
  refuseTaken(workspace, document, *declared, name);
  forEachOtherProgram(workspace, document, *declared,
                      [&](const Analysed& program, std::optional<vel::TextLocation> declaration) {
                        if (declaration) return add(program, *declaration);
                        // It may lack the declaration only because it is not finished.
                        const std::string& path = program.session().sources().path(program.file());
                        const bool broken =
                            program.session().view().program().broken[program.file()];
                        if (broken && !workspace.declares(path, declared->name)) {
                          refuse(fmt::format("{} has syntax errors", path));
                        }
                      });
  return {{"changes", std::move(changes)}};
}

}  // namespace

void addRename(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  capabilities["renameProvider"] = {{"prepareProvider", true}};
  onDocument(rpc, workspace, "textDocument/prepareRename", prepare);
  rpc.onRequest("textDocument/rename",
                [&workspace](const Json& params) { return rename(workspace, params); });
}

}  // namespace lsp
