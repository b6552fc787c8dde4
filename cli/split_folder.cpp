#include "cli/split_folder.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <sstream>

#include "cli/failure.h"
#include "cli/output_file.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

using Names = std::set<std::string>;

// None of devices and pipes, which may have no end.
std::optional<std::string> contents(const fs::path& path) {
  std::error_code missing;
  if (!fs::is_regular_file(path, missing)) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string_view firstLine(std::string_view text) { return text.substr(0, text.find('\n') + 1); }

// The files that velc wrote the last time, and may remove; none if it did not write the list.
Names listed(const fs::path& list) {
  Names names;
  std::istringstream lines(contents(list).value_or(""));
  for (std::string name; std::getline(lines, name);) {
    const std::string extension = fs::path(name).extension();
    const bool file =
        name.find('/') == std::string::npos && (extension == ".c" || extension == ".h");
    if (!file) return {};
    names.insert(name);
  }
  return names;
}

std::string listOf(const Names& names) {
  std::string text;
  for (const std::string& name : names) text += name + '\n';
  return text;
}

void makeFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error || !fs::is_directory(folder, error)) {
    throw Failure(fmt::format("cannot make the folder {}: {}", folder.native(),
                              error ? error.message() : "it is a file"));
  }
}

// All files begin with the same line.
bool isOwn(const fs::path& path, std::string_view mark) {
  const auto text = contents(path);
  return fs::is_regular_file(path) && text && firstLine(*text) == mark;
}

}  // namespace

void writeIfDifferent(const std::string& path, const std::string& text) {
  if (contents(path) != text) writeFile(path, text);
}

void writeSplitFolder(const std::string& folder,
                      const std::vector<refhost::TranslatedFile>& files) {
  const fs::path base(folder);
  makeFolder(base);
  const std::string_view mark = firstLine(files.front().text);
  Names names;
  std::vector<const refhost::TranslatedFile*> different;
  for (const refhost::TranslatedFile& file : files) {
    names.insert(file.name);
    const fs::path path = base / file.name;
    const auto old = contents(path);
    if (old == file.text) continue;
    if (old && !old->empty() && firstLine(*old) != mark) {
      throw Failure(
          fmt::format("{} was not written by velc, which does not replace it", path.native()));
    }
    different.push_back(&file);
  }
  const std::string list = base / kFileList;
  const Names before = listed(list);
  // Lest a file be forgotten that is written before velc is interrupted.
  Names all = before;
  all.insert(names.begin(), names.end());
  writeIfDifferent(list, listOf(all));
  for (const refhost::TranslatedFile* const file : different) {
    writeFile(base / file->name, file->text);
  }
  for (const std::string& name : before) {
    if (names.count(name) != 0 || !isOwn(base / name, mark)) continue;
    // Where letter case does not matter, a new file may have replaced it.
    std::error_code missing;
    bool replaced = false;
    for (const refhost::TranslatedFile* const file : different) {
      replaced = replaced || fs::equivalent(base / file->name, base / name, missing);
    }
    if (!replaced) fs::remove(base / name, missing);
  }
  writeIfDifferent(list, listOf(names));
}

}  // namespace velc
