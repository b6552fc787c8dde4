// Writes results completely or not at all.
#pragma once

#include <string>
#include <string_view>

namespace velc {

// Both throw Failure when they cannot write the whole text.
void writeStandardOutput(std::string_view text);
void writeStandardError(std::string_view text);

// Replaces the contents of the file `path` by `text` atomically. When it throws Failure, or a
// signal terminates velc, the file is unchanged and no temporary file remains. Writes directly to
// anything other than a regular file (a device, a pipe).
void writeFile(const std::string& path, std::string_view text);
// The same for a program: a new file can be executed.
void writeProgram(const std::string& path, std::string_view text);
// Like writeFile(), and waits until the disk has the new file, so that a loss of power leaves it
// whole, too.
void writeFileToDisk(const std::string& path, std::string_view text);

}  // namespace velc
