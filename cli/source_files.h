// The source files that a command line names.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "refhost/syntax/source.h"

namespace velc {

// True of names that end in `.st`, in upper or lower case.
bool isSource(const std::filesystem::path& path);

// The files, with each folder replaced by the files `*.st` in it and in the folders below, in the
// order of their paths. Leaves out what begins with a dot and what is no file, such as a pipe, and
// does not follow links to folders. A file that is named again, by whatever path, is left out, too.
// Throws Failure for a folder that cannot be read or has no such file, and for a second `-`.
std::vector<std::string> sourceFiles(const std::vector<std::string>& named);

// The name of a file in messages: that of standard input, `-`, is "<stdin>".
std::string sourceName(const std::string& file);

// Reads a file or standard input. Throws Failure.
void loadSource(refhost::SourceManager& sources, const std::string& file);

}  // namespace velc
