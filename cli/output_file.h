// Results that are written whole or not at all.
#pragma once

#include <string>
#include <string_view>

namespace velc {

// Both throw Failure when not all of the text could be written.
void writeStandardOutput(std::string_view text);
void writeStandardError(std::string_view text);

// Replaces the file `path` by `text` in one step: when it throws Failure, the file
// is as it was and nothing else is left behind; so it is when velc is asked to end. A path that
// names something other than a regular file (a device, a pipe) is written to directly.
void writeFile(const std::string& path, std::string_view text);

}  // namespace velc
