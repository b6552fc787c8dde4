#include "cli/translation.h"

#include <fmt/format.h>

#include <filesystem>
#include <set>

#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/progress.h"
#include "cli/project.h"
#include "cli/report.h"
#include "cli/source_files.h"

namespace velc {

std::unique_ptr<refhost::Session> startSession(const CommonOptions& common) {
  auto session = std::make_unique<refhost::Session>(sessionOptions(common));
  std::string error;
  if (session->start(error)) return session;
  const ProjectLibrary* const library = libraryAtFault(common, error);
  if (library == nullptr) throw Failure(error);
  writeStandardError(fmt::format("{}: error: {}\n", library->place, error));
  throw Failure(fmt::format("{} cannot be used", kProjectFile));
}

void refuseClashes(const std::vector<std::string>& inputs,
                   const std::vector<std::string>& outputs) {
  namespace fs = std::filesystem;
  std::set<fs::path> written;
  for (const std::string& output : outputs) {
    std::error_code missing;
    if (output.empty() || output == "-" || fs::is_character_file(output, missing)) continue;
    for (const std::string& input : inputs) {
      if (fs::equivalent(input, output, missing)) {
        throw Failure(fmt::format("{} is a source and cannot be the output too", input));
      }
    }
    if (!written.insert(fs::weakly_canonical(fs::absolute(output), missing)).second) {
      throw Failure(fmt::format("{} cannot be two outputs", output));
    }
  }
}

bool analyse(refhost::Session& session, Report& report, const std::vector<std::string>& files,
             bool tests) {
  std::optional<Progress> progress("analysing");
  for (const std::string& file : files) loadSource(session.sources(), file);
  const bool accepted = session.analyse(tests);
  progress.reset();
  report.add(session, 0, files.size());
  return accepted;
}

bool analyse(refhost::Session& session, const CommonOptions& common,
             const std::vector<std::string>& files, bool tests) {
  Report report(common);
  const bool accepted = analyse(session, report, files, tests);
  report.finish();
  return accepted;
}

namespace {

// Returns what `emit` writes, and prints the diagnostics of that.
template <typename Emit>
auto printing(refhost::Session& session, const CommonOptions& common, const Emit& emit) {
  const std::size_t known = session.messages().size();
  std::optional<Progress> progress("translating");
  auto result = emit();
  progress.reset();
  Report(common).add(session, known, 0);
  return result;
}

}  // namespace

std::optional<std::string> translateToC(refhost::Session& session, const CommonOptions& common,
                                        const refhost::TranslationOptions& options) {
  std::string text = printing(session, common, [&] { return session.translate(options); });
  if (text.empty()) return std::nullopt;
  return text;
}

std::vector<refhost::TranslatedFile> translateToFiles(refhost::Session& session,
                                                      const CommonOptions& common, bool lines) {
  return printing(session, common, [&] { return session.translateSplit(lines); });
}

}  // namespace velc
