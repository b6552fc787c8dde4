// Patterns of file names.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace velc {

// True of a name with `*`, `?` or `[`.
bool isPattern(const std::string& name);

// The files below `folder` that match: `*` and `?` stand for characters of one name, `[...]` for
// one of several, and `**` between slashes for any number of folders. A name with `[` that exists
// as it is written is no pattern. If the pattern ends in `*` or without an extension, only programs
// match; `**` at the end has all of them below. Ordered by path, without those whose names begin
// with a dot where the pattern does not.
std::vector<std::string> filesMatching(const std::filesystem::path& folder,
                                       const std::string& pattern);

// True if that would find `file`, an absolute path without dots, were it on disk.
bool wouldMatch(const std::filesystem::path& folder, const std::string& pattern,
                const std::filesystem::path& file);

}  // namespace velc
