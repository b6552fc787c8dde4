#include "lsp/publisher.h"

namespace lsp {

std::int64_t Publisher::versionOf(const std::string& path) const {
  const Document* const document = documents_.find(path);
  return document != nullptr ? document->version : -1;
}

void Publisher::set(const std::string& owner, const std::string& path, Json diagnostics) {
  const auto [known, isNew] = files_.try_emplace(path);
  File& file = known->second;
  file.owner = owner;
  const bool open = documents_.find(path) != nullptr;
  const bool same = file.diagnostics == diagnostics && file.version == versionOf(path);
  // Nobody waits to hear that a file which is not open has no faults.
  if (same && !(isNew && open)) return;
  file.diagnostics = std::move(diagnostics);
  send(path, file);
}

void Publisher::withdraw(const std::string& owner,
                         const std::function<bool(const std::string& path)>& keeps) {
  for (auto at = files_.begin(); at != files_.end();) {
    auto& [path, file] = *at;
    if (file.owner != owner || (keeps && keeps(path))) {
      ++at;
      continue;
    }
    const bool shown = !file.diagnostics.empty();
    file.diagnostics = Json::array();
    if (shown) send(path, file);
    at = files_.erase(at);
  }
}

void Publisher::setFindings(Findings findings) {
  std::swap(findings, findings_);
  for (const auto& [path, old] : findings) {
    if (findings_.count(path) == 0) send(path, files_[path]);
  }
  for (const auto& [path, added] : findings_) send(path, files_[path]);
}

void Publisher::send(const std::string& path, File& file) {
  Json all = file.diagnostics;
  const auto found = findings_.find(path);
  if (found != findings_.end()) all.insert(all.end(), found->second.begin(), found->second.end());
  Json params = {{"uri", documents_.uriOf(path)}, {"diagnostics", std::move(all)}};
  file.version = versionOf(path);
  if (file.version >= 0) params["version"] = file.version;
  publish_(std::move(params));
}

}  // namespace lsp
