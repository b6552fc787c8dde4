#include "cli/common_options.h"

#include "cli/paths.h"

namespace velc {

std::vector<std::string> librariesOf(const CommonOptions& common) {
  std::vector<std::string> libraries = common.plugins;
  if (libraries.empty()) {
    for (const ProjectLibrary& library : common.projectPlugins) libraries.push_back(library.path);
  }
  if (libraries.empty()) libraries.emplace_back();
  if (libraries.front().empty()) libraries.front() = pluginPath();
  return libraries;
}

const ProjectLibrary* libraryAtFault(const CommonOptions& common, const std::string& error) {
  if (!common.plugins.empty()) return nullptr;
  for (const ProjectLibrary& library : common.projectPlugins) {
    if (!library.path.empty() && error.rfind(library.path + ": ", 0) == 0) return &library;
  }
  return nullptr;
}

refhost::Options sessionOptions(const CommonOptions& common) {
  refhost::Options options;
  const std::vector<std::string> libraries = librariesOf(common);
  options.pluginPath = libraries.front();
  options.addOnPaths.assign(libraries.begin() + 1, libraries.end());
  options.localIo = common.localIo;
  options.notation = common.notation;
  options.memory = common.memory;
  options.warnings = common.warnings;
  return options;
}

}  // namespace velc
