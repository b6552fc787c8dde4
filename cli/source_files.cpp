#include "cli/source_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <set>

#include "cli/failure.h"
#include "core/case_folding.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

constexpr const char* kStandardInput = "-";

bool isHidden(const fs::path& path) { return path.filename().native().front() == '.'; }

void addFilesOf(const std::string& folder, std::vector<std::string>& files) {
  std::vector<fs::path> found;
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, error);
  fs::path path = folder;
  while (!error && entry != fs::recursive_directory_iterator()) {
    path = entry->path();
    std::error_code unknown;
    if (isHidden(path)) {
      entry.disable_recursion_pending();
    } else if (isSource(path) && !entry->is_directory(unknown) && !entry->is_other(unknown)) {
      found.push_back(folder == "." ? path.lexically_relative(folder) : path);
    }
    entry.increment(error);
  }
  if (error) throw Failure(fmt::format("cannot read {}: {}", path.native(), error.message()));
  if (found.empty()) throw Failure(fmt::format("there is no *.st in {}", folder));
  std::sort(found.begin(), found.end());
  std::copy(found.begin(), found.end(), std::back_inserter(files));
}

}  // namespace

bool isSource(const fs::path& path) {
  return vel::equalIgnoringCase(path.extension().native(), ".st");
}

std::vector<std::string> sourceFiles(const std::vector<std::string>& named) {
  std::vector<std::string> all;
  for (const std::string& name : named) {
    std::error_code unknown;
    if (fs::is_directory(name, unknown)) {
      addFilesOf(name, all);
    } else {
      all.push_back(name);
    }
  }
  std::vector<std::string> files;
  std::set<fs::path> known;
  for (std::string& file : all) {
    std::error_code unknown;
    const fs::path path = file == kStandardInput ? fs::path() : fs::canonical(file, unknown);
    // What cannot be resolved, such as the pipe of a process, is not recognised again.
    const bool isNew = unknown || known.insert(path).second;
    if (isNew) {
      files.push_back(std::move(file));
    } else if (path.empty()) {
      throw Failure("standard input (-) can be read only once");
    }
  }
  return files;
}

std::string sourceName(const std::string& file) {
  return file == kStandardInput ? "<stdin>" : file;
}

void loadSource(refhost::SourceManager& sources, const std::string& file) {
  const bool isInput = file == kStandardInput;
  std::string error;
  const int loaded =
      isInput ? sources.load(stdin, sourceName(file), error) : sources.load(file, error);
  if (loaded < 0) {
    throw Failure(fmt::format("cannot read {}: {}", isInput ? "standard input" : file, error));
  }
}

}  // namespace velc
