// What files declare that are not in the program of a document.
#include <filesystem>
#include <set>

#include "lsp/workspace.h"

namespace lsp {

std::vector<const refhost::FileDeclaration*> Workspace::declaredBeside(
    const std::string& document) {
  const Program& program = programOf(document);
  if (program.whole) return {};
  return neighbours_.declaredBeside(program.files, candidatesFor(program));
}

std::vector<const refhost::FileDeclaration*> Workspace::declaredElsewhere() {
  std::set<std::string> inPrograms;
  std::set<std::string> files;
  for (const auto& [path, document] : documents_.all()) {
    if (std::filesystem::path(path).filename() == velc::kProjectFile) inPrograms.insert(path);
    const std::vector<std::string>& program = programOf(path).files;
    inPrograms.insert(program.begin(), program.end());
    const std::vector<std::string> around = filesAround(path, path);
    files.insert(around.begin(), around.end());
  }
  for (const std::string& path : folders.projects()) {
    const auto project = projects_.of(path);
    if (project != nullptr) files.insert(project->files.begin(), project->files.end());
  }
  std::vector<const refhost::FileDeclaration*> all;
  for (const std::string& file : files) {
    const auto* const found =
        inPrograms.count(file) == 0 ? neighbours_.declarationsIn(file) : nullptr;
    if (found == nullptr) continue;
    for (const refhost::FileDeclaration& declaration : *found) all.push_back(&declaration);
  }
  return all;
}

}  // namespace lsp
