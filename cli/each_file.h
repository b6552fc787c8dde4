// Programs of one file each.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace velc {

// Calls `execute` with each of the files alone. Prints a Failure with the name of the file and goes
// on. Returns the highest ExitCode.
int forEachFile(const std::vector<std::string>& files,
                const std::function<int(const std::vector<std::string>&)>& execute);

}  // namespace velc
