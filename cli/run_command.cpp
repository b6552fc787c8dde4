#include <fmt/format.h>

#include <optional>

#include "cli/commands.h"
#include "cli/compilation.h"
#include "cli/crash_places.h"
#include "cli/each_file.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/process.h"
#include "cli/program_driver.h"
#include "cli/progress.h"
#include "cli/retention.h"
#include "cli/run_options.h"
#include "cli/source_files.h"
#include "cli/temporary_folder.h"
#include "cli/translation.h"

namespace velc {

namespace {

// Runs the program. False, with a message, when it did not run to its end.
bool execute(const refhost::Session& session, const TemporaryFolder& folder,
             const RunOptions& options, std::uint32_t clock, const TerminationGuard& guard) {
  std::optional<Progress> progress("running");
  const ProcessResult result =
      runProcess({folder.path() / "program", folder.path() / "values", folder.path() / "trace",
                  std::to_string(options.scans), std::to_string(options.cycle),
                  std::to_string(clock), folder.path() / "retained", folder.path() / "crash"},
                 guard, options.timeout);
  progress.reset();
  if (result.succeeded()) return true;
  std::string reason;
  if (result.end == ProcessResult::End::TimedOut) {
    reason = fmt::format("did not end within {} s (--timeout)", options.timeout.count());
  } else if (result.end == ProcessResult::End::Signalled) {
    reason = "was ended by " + signalText(result.code);
  } else {
    reason = fmt::format("failed with status {}", result.code);
  }
  reason += crashText(session, crashPlaces(session.sources(), folder.path() / "program",
                                           folder.read("crash"), guard));
  writeStandardError(fmt::format("velc: the program {}{}\n", reason, quotedOutput(result.output)));
  return false;
}

int runTogether(const CommonOptions& common, const RunOptions& options) {
  refuseSourceAsOutput(options.files, options.retained);
  const auto session = startSession(common);
  if (!analyse(*session, common, options.files)) return kProgramErrors;
  if (session->programs().empty()) throw Failure("there is no PROGRAM to run");
  const auto text = translateToC(*session, common, {true, "program.c", {}});
  if (!text) return kProgramErrors;
  std::vector<std::string> statements;
  for (const std::string& setting : options.settings) {
    statements.push_back(settingStatement(*session, setting));
  }

  const auto variables = printedVariables(*session, options.shown);
  const bool retains = !options.retained.empty();
  std::vector<refhost::ProgramVariable> retainedVariables;
  Retained retained;
  if (retains) {
    std::string notices;
    retainedVariables = session->retainedVariables();
    retained = loadRetained(options.retained, retainedVariables, notices);
    writeStandardError(notices);
  }

  const TerminationGuard guard;
  const TemporaryFolder folder;
  writeFile(folder.path() / "program.c", *text);
  writeFile(folder.path() / "driver.c",
            driverText(*session, statements, variables, options.traceIo, retainedVariables));
  if (!retained.bytes.empty()) writeFile(folder.path() / "retained", retained.bytes);
  // Line numbers alone cost hardly any time. addr2line confuses files in version 5 of the format.
  compileProgram(folder.path() / "driver.c", folder.path() / "program",
                 {options.compiler, {"-O1", "-gdwarf-4", "-g1"}, options.timeout}, guard);
  if (!execute(*session, folder, options, retained.clock, guard)) return kProgramErrors;
  if (retains) {
    retained.bytes = folder.read("retained");
    retained.clock +=
        static_cast<std::uint32_t>(options.cycle) * static_cast<std::uint32_t>(options.scans);
    writeFileToDisk(options.retained, retainedText(retained, retainedVariables));
  }
  writeStandardOutput(folder.read("trace") +
                      valueLines(*session, variables, folder.read("values")));
  return kSuccess;
}

int run(const CommonOptions& common, const RunOptions& options) {
  if (!options.each) return runTogether(common, options);
  if (!options.retained.empty()) throw Failure("--retain is for one program, not for --each");
  const char* separator = "";
  return forEachFile(options.files, [&](const std::vector<std::string>& file) {
    writeStandardOutput(fmt::format("{}==> {} <==\n", separator, sourceName(file.front())));
    separator = "\n";
    RunOptions one = options;
    one.files = file;
    return runTogether(common, one);
  });
}

}  // namespace

void addRunCommand(CommandLine& line) {
  CLI::App& command =
      line.addCommand("run", "Translate, compile and run programs; print their variables");
  const auto options = std::make_shared<RunOptions>();
  addSources(command, line.common, options->files);
  addEachOption(command, options->each);
  addRunOptions(command, *options);
  line.setAction(command, options, run);
}

}  // namespace velc
