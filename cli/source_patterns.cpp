#include "cli/source_patterns.h"

#include <fnmatch.h>

#include <algorithm>

#include "cli/source_files.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

std::vector<fs::directory_entry> entriesOf(const fs::path& folder) {
  std::vector<fs::directory_entry> entries;
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    entries.push_back(*entry);
  }
  return entries;
}

// True if only programs are meant: nothing behind the wildcards says which files they are.
bool asksForSources(const std::string& name) {
  if (!isPattern(name)) return false;
  const std::string extension = fs::path(name).extension();
  return extension.empty() || extension.back() == '*';
}

class Search {
 public:
  explicit Search(const fs::path& pattern) : parts_(pattern.begin(), pattern.end()) {
    if (!parts_.empty() && parts_.back() == "**") parts_.emplace_back("*");
    sourcesOnly_ = !parts_.empty() && asksForSources(parts_.back());
  }

  // Looks for what matches the parts of the pattern from `part` on.
  void below(const fs::path& folder, std::size_t part) {
    if (part == parts_.size()) return;
    const std::string& name = parts_[part].native();
    const bool last = part + 1 == parts_.size();
    if (name == "**") below(folder, part + 1);
    if (name == "." || name == "..") return below(folder / name, part + 1);
    std::error_code unknown;
    const bool isThere = name.find('[') != std::string::npos && fs::exists(folder / name, unknown);
    for (const auto& entry : entriesOf(folder)) {
      const fs::path& path = entry.path();
      const bool isFolder = entry.is_directory(unknown);
      if (name == "**") {
        const bool hidden = path.filename().native().front() == '.';
        // Links may lead in a circle.
        if (isFolder && !hidden && !entry.is_symlink(unknown)) below(path, part);
      } else if (isThere ? path.filename() == name
                         : fnmatch(name.c_str(), path.filename().c_str(), FNM_PERIOD) == 0) {
        if (last && takes(entry)) found_.push_back(path.lexically_normal());
        if (!last && isFolder) below(path, part + 1);
      }
    }
  }

  std::vector<std::string> files() {
    std::sort(found_.begin(), found_.end());
    found_.erase(std::unique(found_.begin(), found_.end()), found_.end());
    return {found_.begin(), found_.end()};
  }

 private:
  bool takes(const fs::directory_entry& entry) const {
    std::error_code unknown;
    return entry.is_regular_file(unknown) && (!sourcesOnly_ || isSource(entry.path()));
  }

  std::vector<fs::path> parts_;
  bool sourcesOnly_ = false;
  std::vector<fs::path> found_;
};

using Part = fs::path::iterator;

bool partsMatch(Part pattern, Part patternEnd, Part name, Part nameEnd) {
  if (pattern == patternEnd) return name == nameEnd;
  if (*pattern == "**" && partsMatch(std::next(pattern), patternEnd, name, nameEnd)) return true;
  if (name == nameEnd) return false;
  if (*pattern == "**") {
    // It stands for folders, which are not hidden.
    const bool folder = std::next(name) != nameEnd && name->native().front() != '.';
    return folder && partsMatch(pattern, patternEnd, std::next(name), nameEnd);
  }
  return fnmatch(pattern->c_str(), name->c_str(), FNM_PERIOD) == 0 &&
         partsMatch(std::next(pattern), patternEnd, std::next(name), nameEnd);
}

}  // namespace

bool wouldMatch(const fs::path& folder, const std::string& pattern, const fs::path& file) {
  fs::path whole = (folder / pattern).lexically_normal();
  if (whole.filename() == "**") whole /= "*";
  if (asksForSources(whole.filename()) && !isSource(file)) return false;
  return partsMatch(whole.begin(), whole.end(), file.begin(), file.end());
}

bool isPattern(const std::string& name) { return name.find_first_of("*?[") != std::string::npos; }

std::vector<std::string> filesMatching(const fs::path& folder, const std::string& pattern) {
  const fs::path path(pattern);
  Search search(path.relative_path());
  search.below(path.is_absolute() ? path.root_path() : folder, 0);
  return search.files();
}

}  // namespace velc
