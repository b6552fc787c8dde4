#include "cli/translation.h"

#include <fmt/format.h>

#include "cli/diagnostics_printer.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/paths.h"
#include "cli/progress.h"
#include "cli/sarif.h"

namespace velc {

namespace {

// Formats the messages from index `first` on; in SARIF, all messages.
std::string diagnostics(refhost::Session& session, const CommonOptions& common, std::size_t first) {
  const auto& messages = session.messages();
  const Omitted rest = omitted(messages, first, common.maxErrors);
  if (common.diagnostics == DiagnosticsForm::Sarif) {
    return sarifLog(session.sources(), messages, rest, messagesPage());
  }
  const bool json = common.diagnostics == DiagnosticsForm::Json;
  const auto one = json ? diagnosticJson : diagnosticText;
  std::string text;
  for (std::size_t i = first; i < rest.first; ++i) text += one(session.sources(), messages[i]);
  if (rest.any()) text += json ? omittedJson(rest) : omittedText(rest);
  return text;
}

// Prints the messages from index `first` on.
void printMessages(refhost::Session& session, const CommonOptions& common, std::size_t first) {
  writeStandardError(diagnostics(session, common, first));
}

}  // namespace

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

bool analyse(refhost::Session& session, const CommonOptions& common,
             const std::vector<std::string>& files) {
  std::optional<Progress> progress("analysing");
  for (const std::string& file : files) {
    std::string error;
    if (session.sources().load(file, error) < 0) {
      throw Failure(fmt::format("cannot read {}: {}", file, error));
    }
  }
  const bool accepted = session.analyse();
  progress.reset();
  printMessages(session, common, 0);
  return accepted;
}

std::optional<std::string> translateToC(refhost::Session& session, const CommonOptions& common) {
  const std::size_t known = session.messages().size();
  std::optional<Progress> progress("translating");
  std::string text = session.translate();
  progress.reset();
  printMessages(session, common, known);
  if (text.empty()) return std::nullopt;
  return text;
}

}  // namespace velc
