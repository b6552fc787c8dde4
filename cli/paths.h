// Where the files that come with velc lie, seen from its executable: the same
// places in the build tree and once installed.
#pragma once

#include <filesystem>

namespace velc {

// Each throws Failure when the file is not there.
std::filesystem::path pluginPath();
// `name` is a static library of generated programs, such as "libvelrt.a".
std::filesystem::path libraryPath(const char* name);
// The folder of the headers of generated programs.
std::filesystem::path includeFolder();

}  // namespace velc
