#include <fmt/format.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/translation.h"

namespace velc {

namespace {

std::string callTreeText(refhost::Session& session) {
  auto edges = nlohmann::ordered_json::array();
  for (const refhost::CallEdge& edge : session.calls()) {
    edges.push_back({{"caller", edge.caller},
                     {"callee", edge.callee},
                     {"line", session.sources().position(edge.location).line}});
  }
  return edges.dump(2) + '\n';
}

}  // namespace

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
  if (options.output != "-") writeFile(options.output, *text);
  if (options.callTree) {
    writeStandardOutput(callTreeText(*session));
  } else if (options.output == "-") {
    writeStandardOutput(*text);
  }
  return kSuccess;
}

}  // namespace velc
