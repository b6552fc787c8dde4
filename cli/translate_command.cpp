#include <fmt/format.h>

#include <filesystem>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/translation.h"

namespace velc {

int translate(const CommonOptions& common, const TranslateOptions& options) {
  for (const std::string& file : options.files) {
    std::error_code missing;
    if (std::filesystem::equivalent(file, options.output, missing)) {
      throw Failure(fmt::format("{} is a source and cannot be the output too", file));
    }
  }
  const auto session = startSession(common);
  if (!analyse(*session, common, options.files)) return kProgramErrors;
  const auto text = translateToC(*session, common);
  if (!text) return kProgramErrors;
  if (options.output == "-") {
    writeStandardOutput(*text);
  } else {
    writeFile(options.output, *text);
  }
  return kSuccess;
}

}  // namespace velc
