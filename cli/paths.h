// Paths of the files that are installed with velc. They are relative to its executable, and the
// same in the build tree.
#pragma once

#include <filesystem>

namespace velc {

// Each throws Failure when the file does not exist.
std::filesystem::path pluginPath();
// `name` is a static library for generated programs, such as "libvelrt.a".
std::filesystem::path libraryPath(const char* name);
// The folder of the headers that generated programs include.
std::filesystem::path includeFolder();

// The page that explains all messages, for a browser; empty if the documents are not installed.
std::filesystem::path messagesPage();

}  // namespace velc
