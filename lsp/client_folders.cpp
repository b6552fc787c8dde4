#include "lsp/client_folders.h"

#include <algorithm>
#include <filesystem>

#include "cli/project.h"
#include "cli/uri.h"

namespace lsp {

namespace {

namespace fs = std::filesystem;

// A folder may be anything, up to somebody's home.
constexpr int kDepth = 4;

std::vector<std::string> pathsIn(const Json& folders) {
  std::vector<std::string> paths;
  if (!folders.is_array()) return paths;
  for (const Json& folder : folders) {
    paths.push_back(velc::pathOfUri(folder.at("uri").get<std::string>()));
  }
  return paths;
}

}  // namespace

void ClientFolders::initialize(const Json& params) {
  folders_ = pathsIn(params.value("workspaceFolders", Json()));
  const Json root = params.value("rootUri", Json());
  if (folders_.empty() && root.is_string()) {
    folders_.push_back(velc::pathOfUri(root.get<std::string>()));
  }
  forget();
}

void ClientFolders::didChange(const Json& params) {
  const Json& event = params.at("event");
  for (const std::string& gone : pathsIn(event.at("removed"))) {
    folders_.erase(std::remove(folders_.begin(), folders_.end(), gone), folders_.end());
  }
  const std::vector<std::string> added = pathsIn(event.at("added"));
  folders_.insert(folders_.end(), added.begin(), added.end());
  forget();
}

const std::vector<std::string>& ClientFolders::projects() {
  if (projects_) return *projects_;
  projects_.emplace();
  for (const std::string& folder : folders_) {
    std::error_code error;
    if (!fs::path(folder).is_absolute()) continue;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied,
                                           error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
      const fs::path& path = entry->path();
      const bool hidden = path.filename().native().front() == '.';
      if (hidden || entry.depth() >= kDepth) entry.disable_recursion_pending();
      if (path.filename() == velc::kProjectFile) projects_->push_back(path);
    }
  }
  return *projects_;
}

}  // namespace lsp
