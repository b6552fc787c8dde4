#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

#include "cli/commands.h"
#include "cli/each_file.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/paths.h"
#include "cli/process.h"
#include "cli/program_driver.h"
#include "cli/progress.h"
#include "cli/retention.h"
#include "cli/run_options.h"
#include "cli/temporary_folder.h"
#include "cli/translation.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

// Formats output of a program for the end of a message.
std::string quoted(const std::string& output) {
  return output.empty() ? "" : ":\n" + output.substr(0, output.find_last_not_of('\n') + 1);
}

std::string signalText(int signal) {
  return fmt::format("signal {} ({})", signal, strsignal(signal));
}

std::string lateText(const RunOptions& options) {
  return fmt::format("did not end within {} s (--timeout)", options.timeout.count());
}

void compile(const fs::path& folder, const RunOptions& options, const TerminationGuard& guard) {
  const std::string& compiler = options.compiler;
  const Progress progress("compiling");
  std::vector<std::string> arguments{compiler,
                                     "-std=gnu11",
                                     "-O1",
                                     "-I" + includeFolder().native(),
                                     "-o",
                                     folder / "program",
                                     folder / "driver.c",
                                     libraryPath("libvelrun.a"),
                                     libraryPath("libvelrt.a"),
                                     "-lm"};
  const bool clang = fs::path(compiler).filename().native().find("clang") != std::string::npos;
  // Unlike gcc, clang allows only 256 levels of brackets unless it is told otherwise. The analysis
  // of pointers takes gcc a time that grows with the square of a unit's string statements.
  arguments.push_back(clang ? "-fbracket-depth=10000" : "-fno-tree-pta");
  const ProcessResult result = runProcess(arguments, guard, options.timeout);
  if (result.succeeded()) {
    if (fs::exists(folder / "program")) return;
    throw Failure(fmt::format("the C compiler '{}' made no program", compiler));
  }
  if (result.end == ProcessResult::End::TimedOut) {
    throw Failure(fmt::format("the C compiler '{}' {}", compiler, lateText(options)));
  }
  throw Failure(fmt::format("the C compiler '{}' failed with {}{}", compiler,
                            result.end == ProcessResult::End::Signalled
                                ? signalText(result.code)
                                : fmt::format("status {}", result.code),
                            quoted(result.output)));
}

// Runs the program. False, with a message, when it did not run to its end.
bool execute(const fs::path& folder, const RunOptions& options, std::uint32_t clock,
             const TerminationGuard& guard) {
  std::optional<Progress> progress("running");
  const ProcessResult result = runProcess(
      {folder / "program", folder / "values", folder / "trace", std::to_string(options.scans),
       std::to_string(options.cycle), std::to_string(clock), folder / "retained"},
      guard, options.timeout);
  progress.reset();
  if (result.succeeded()) return true;
  std::string reason;
  if (result.end == ProcessResult::End::TimedOut) {
    reason = lateText(options);
  } else if (result.end == ProcessResult::End::Signalled) {
    reason = "was ended by " + signalText(result.code);
  } else {
    reason = fmt::format("failed with status {}", result.code);
  }
  writeStandardError(fmt::format("velc: the program {}{}\n", reason, quoted(result.output)));
  return false;
}

std::string readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void refuseSource(const RunOptions& options) {
  for (const std::string& file : options.files) {
    std::error_code missing;
    if (fs::equivalent(file, options.retained, missing)) {
      throw Failure(fmt::format("{} is a source and cannot be the output too", file));
    }
  }
}

int runTogether(const CommonOptions& common, const RunOptions& options) {
  refuseSource(options);
  const auto session = startSession(common);
  if (!analyse(*session, common, options.files)) return kProgramErrors;
  if (session->programs().empty()) throw Failure("there is no PROGRAM to run");
  const auto text = translateToC(*session, common);
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
  // Temporary files that a killed compiler leaves behind are deleted with the folder.
  setenv("TMPDIR", folder.path().c_str(), 1);
  writeFile(folder.path() / "program.c", *text);
  writeFile(folder.path() / "driver.c",
            driverText(*session, statements, variables, options.traceIo, retainedVariables));
  if (!retained.bytes.empty()) writeFile(folder.path() / "retained", retained.bytes);
  compile(folder.path(), options, guard);
  if (!execute(folder.path(), options, retained.clock, guard)) return kProgramErrors;
  if (retains) {
    retained.bytes = readFile(folder.path() / "retained");
    retained.clock +=
        static_cast<std::uint32_t>(options.cycle) * static_cast<std::uint32_t>(options.scans);
    writeFileToDisk(options.retained, retainedText(retained, retainedVariables));
  }
  writeStandardOutput(readFile(folder.path() / "trace") +
                      valueLines(*session, variables, readFile(folder.path() / "values")));
  return kSuccess;
}

int run(const CommonOptions& common, const RunOptions& options) {
  if (!options.each) return runTogether(common, options);
  if (!options.retained.empty()) throw Failure("--retain is for one program, not for --each");
  const char* separator = "";
  return forEachFile(options.files, [&](const std::vector<std::string>& file) {
    writeStandardOutput(fmt::format("{}==> {} <==\n", separator, file.front()));
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
