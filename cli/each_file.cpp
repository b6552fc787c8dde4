#include "cli/each_file.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/source_files.h"

namespace velc {

int forEachFile(const std::vector<std::string>& files,
                const std::function<int(const std::vector<std::string>&)>& execute) {
  int worst = kSuccess;
  for (const std::string& file : files) {
    int code = kFailure;
    try {
      code = execute({file});
    } catch (const Failure& failure) {
      const std::string what = failure.what();
      const bool named = what.find(file) != std::string::npos;
      writeStandardError(fmt::format("velc: {}{}\n", named ? "" : sourceName(file) + ": ", what));
    }
    worst = std::max(worst, code);
  }
  return worst;
}

}  // namespace velc
