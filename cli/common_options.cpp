#include "cli/common_options.h"

#include "cli/paths.h"

namespace velc {

std::vector<std::string> librariesOf(const CommonOptions& common) {
  std::vector<std::string> libraries =
      common.plugins.empty() ? common.projectPlugins : common.plugins;
  if (libraries.empty()) libraries.emplace_back();
  if (libraries.front().empty()) libraries.front() = pluginPath();
  return libraries;
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
