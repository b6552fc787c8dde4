#include "lsp/projects.h"

#include <filesystem>

namespace lsp {

std::vector<std::string> Projects::unsaved() const {
  std::vector<std::string> files;
  for (const auto& [path, document] : documents_.all()) {
    std::error_code unknown;
    const bool isPath = std::filesystem::path(path).is_absolute();
    if (isPath && !std::filesystem::exists(path, unknown)) files.push_back(path);
  }
  return files;
}

std::shared_ptr<const velc::Project> Projects::of(const std::string& file) {
  const std::filesystem::path path(file);
  if (!path.is_absolute()) return nullptr;
  const auto [folder, isNew] = folders_.try_emplace(path.parent_path());
  const std::string& found = folder->second;
  if (isNew) folder->second = velc::findProject(folder->first);
  if (found.empty()) return nullptr;
  std::string text;
  const Document* const open = documents_.find(found);
  if (open != nullptr) {
    text = open->text;
  } else if (!disk_.read(found, text)) {
    return nullptr;
  }
  Known& known = known_[found];
  if (known.project == nullptr || known.stale || known.text != text) {
    auto project = std::make_shared<const velc::Project>(velc::readProject(found, text, unsaved()));
    // The same object stands for the same settings, with which a session goes on.
    const bool same = known.project != nullptr && known.text == text &&
                      known.project->files == project->files &&
                      known.project->faults.size() == project->faults.size();
    if (!same) known.project = std::move(project);
    known.text = std::move(text);
    known.stale = false;
  }
  return known.project;
}

}  // namespace lsp
