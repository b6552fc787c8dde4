#include "cli/translation.h"

#include <fmt/format.h>

#include <filesystem>

#include "cli/failure.h"
#include "cli/paths.h"
#include "cli/progress.h"
#include "cli/report.h"
#include "cli/source_files.h"

namespace velc {

std::unique_ptr<refhost::Session> startSession(const CommonOptions& common) {
  refhost::Options options;
  if (common.plugins.empty()) {
    options.pluginPath = pluginPath();
  } else {
    options.pluginPath = common.plugins.front();
    options.addOnPaths.assign(common.plugins.begin() + 1, common.plugins.end());
  }
  options.localIo = common.localIo;
  options.notation = common.notation;
  options.memory = common.memory;
  options.warnings = common.warnings;
  auto session = std::make_unique<refhost::Session>(options);
  std::string error;
  if (!session->start(error)) throw Failure(error);
  return session;
}

void refuseSourceAsOutput(const std::vector<std::string>& sources, const std::string& output) {
  for (const std::string& source : sources) {
    std::error_code missing;
    if (std::filesystem::equivalent(source, output, missing)) {
      throw Failure(fmt::format("{} is a source and cannot be the output too", source));
    }
  }
}

bool analyse(refhost::Session& session, Report& report, const std::vector<std::string>& files) {
  std::optional<Progress> progress("analysing");
  for (const std::string& file : files) loadSource(session.sources(), file);
  const bool accepted = session.analyse();
  progress.reset();
  report.add(session, 0, files.size());
  return accepted;
}

bool analyse(refhost::Session& session, const CommonOptions& common,
             const std::vector<std::string>& files) {
  Report report(common);
  const bool accepted = analyse(session, report, files);
  report.finish();
  return accepted;
}

std::optional<std::string> translateToC(refhost::Session& session, const CommonOptions& common,
                                        const refhost::TranslationOptions& options) {
  const std::size_t known = session.messages().size();
  std::optional<Progress> progress("translating");
  std::string text = session.translate(options);
  progress.reset();
  Report(common).add(session, known, 0);
  if (text.empty()) return std::nullopt;
  return text;
}

}  // namespace velc
