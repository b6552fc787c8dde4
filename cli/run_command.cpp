#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>

#include "cli/commands.h"
#include "cli/compilation.h"
#include "cli/counted.h"
#include "cli/crash_places.h"
#include "cli/each_file.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/process.h"
#include "cli/program_driver.h"
#include "cli/progress.h"
#include "cli/retention.h"
#include "cli/run_each.h"
#include "cli/run_options.h"
#include "cli/source_files.h"
#include "cli/stimulus/stimulus.h"
#include "cli/temporary_folder.h"
#include "cli/translation.h"
#include "cli/watch.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

std::int64_t scansOf(const RunOptions& options, std::uint64_t stimulated) {
  if (options.scans) return *options.scans;
  if (options.realtime) return std::numeric_limits<std::int64_t>::max();
  return static_cast<std::int64_t>(std::max<std::uint64_t>(stimulated, 1));
}

// Line numbers alone cost hardly any time. addr2line confuses files in version 5 of the format.
void compile(const fs::path& folder, const char* program, const char* optimisation,
             const RunOptions& options, const TerminationGuard& guard) {
  compileProgram(folder / "driver.c", folder / program,
                 {options.compiler, {optimisation, "-gdwarf-4", "-g1"}, options.timeout}, guard);
}

// Where a program crashed that was run with these arguments. Optimisation moves code to other
// lines, so the program is compiled without it and run again, which leads to the same crash.
std::vector<SourcePlace> placesOfCrash(const refhost::SourceManager& sources,
                                       const TemporaryFolder& temporary,
                                       std::vector<std::string> arguments,
                                       const RunOptions& options, const TerminationGuard& guard) {
  const std::string report = temporary.read("crash");
  if (report.empty()) return {};
  const fs::path plain = temporary.path() / "plain";
  const fs::path optimised = std::exchange(arguments.front(), plain);
  try {
    compile(temporary.path(), "plain", "-O0", options, guard);
    if (runProcess(arguments, guard, options.timeout).end == ProcessResult::End::Signalled) {
      return crashPlaces(sources, plain, temporary.read("crash"), guard);
    }
  } catch (const Failure&) {
    // What the optimised program tells is still worth showing.
  }
  return crashPlaces(sources, optimised, report, guard);
}

// Runs the program. False, with a message, when it did not run to its end.
bool execute(const refhost::Session& session, const TemporaryFolder& temporary,
             const RunOptions& options, std::int64_t scans, std::uint32_t clock, Watch& watch,
             const TerminationGuard& guard) {
  const fs::path& folder = temporary.path();
  std::vector<std::string> arguments{folder / "program", folder / "values", folder / "refreshes",
                                     std::to_string(scans), std::to_string(options.cycle)};
  const auto add = [&arguments](const char* name, const std::string& value) {
    arguments.push_back(fmt::format("{}={}", name, value));
  };
  add("clock", std::to_string(clock));
  add("retained", folder / "retained");
  add("crash", folder / "crash");
  if (!options.stimulus.empty()) add("stimulus", folder / "stimulus");
  const std::vector<std::string> quickArguments = arguments;
  watch.start(guard);
  const ProcessWatch watched{watch.records(), options.realtime, true};
  if (watched.records != nullptr) add("trace", std::to_string(ProcessWatch::kRecords));
  if (options.realtime) add("realtime", folder / "pace");

  // Whether the program gets on can be seen by a trace.
  std::optional<Progress> progress;
  if (!options.watch.writesStandardOutput()) progress.emplace("running");
  const bool limited = options.timeoutSaid || !options.realtime;
  const ProcessResult result = runProcess(
      arguments, guard, limited ? std::optional(options.timeout) : std::nullopt, watched);
  progress.reset();
  // The scans before a crash tell how it came to that.
  watch.end();
  if (result.succeeded()) return true;
  std::string reason;
  std::vector<SourcePlace> places;
  if (result.end == ProcessResult::End::TimedOut) {
    // To run it again would take as long again.
    places = crashPlaces(session.sources(), arguments.front(), temporary.read("crash"), guard);
    reason = fmt::format("did not end within {} s (--timeout)", options.timeout.count());
  } else if (result.end == ProcessResult::End::Signalled) {
    places = placesOfCrash(session.sources(), temporary, quickArguments, options, guard);
    reason = "was ended by " + signalText(result.code);
  } else {
    reason = fmt::format("failed with status {}", result.code);
  }
  reason += crashText(session, places);
  writeStandardError(fmt::format("velc: the program {}{}\n", reason, quotedOutput(result.output)));
  return false;
}

// Keeps no more than a part of the file in memory.
void copyToStandardOutput(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::array<char, 65536> buffer;
  while (file.read(buffer.data(), buffer.size()), file.gcount() > 0) {
    writeStandardOutput({buffer.data(), static_cast<std::size_t>(file.gcount())});
  }
}

// Nothing else may stand among the lines of a trace.
void refuseOtherOutput(const RunOptions& options) {
  const char* const other = options.traceIo                    ? "--trace-io"
                            : !options.shown.empty()           ? "--show"
                            : options.form != ValuesForm::Text ? "--format"
                                                               : nullptr;
  if (options.watch.writesStandardOutput() && other != nullptr) {
    throw Failure(fmt::format(
        "{} and the trace cannot both go to standard output; give the trace a file (-o)", other));
  }
  if (options.traceIo && options.form != ValuesForm::Text) {
    throw Failure("--trace-io prints lines and cannot be used with --format");
  }
}

// Prints how punctual the scans were, and returns their number.
std::uint64_t reportPace(const fs::path& path) {
  std::uint64_t scans = 0, sum = 0, latest = 0, latestScan = 0, overruns = 0;
  std::ifstream(path) >> scans >> sum >> latest >> latestScan >> overruns;
  const auto milliseconds = [](double nanoseconds) {
    return fmt::format("{:.3g} ms", nanoseconds / 1e6);
  };
  std::string text = fmt::format("velc: {} in real time", counted(scans, "scan"));
  if (scans > 0) {
    text += fmt::format(", on average {} late, at most {} (scan {})",
                        milliseconds(static_cast<double>(sum) / static_cast<double>(scans)),
                        milliseconds(static_cast<double>(latest)), latestScan + 1);
  }
  if (overruns > 0) text += fmt::format("; {} of them by a cycle or more", overruns);
  writeStandardError(text + '\n');
  return scans;
}

// Runs one program, and sets `values` to the text of its values, if they are to be printed.
int runTogether(const CommonOptions& common, const RunOptions& options, std::string& values) {
  std::vector<std::string> inputs = options.files;
  inputs.push_back(options.stimulus);
  refuseClashes(inputs, {options.retained, options.watch.output, options.watch.plot});
  refuseOtherOutput(options);
  const auto session = startSession(common);
  if (!analyse(*session, common, options.files)) return kProgramErrors;
  if (session->programs().empty()) throw Failure("there is no PROGRAM to run");
  const auto text = translateToC(*session, common, {true, "program.c", {}});
  if (!text) return kProgramErrors;
  const Places places(*session);
  const std::vector<std::string> statements = settingStatements(places, options.settings);
  const auto variables = printedVariables(*session, options.shown);
  const auto cycle = static_cast<std::uint64_t>(options.cycle);
  const TerminationGuard guard;
  Watch watch(options.watch, places, cycle);
  WatchedVariables watched;
  watched.traced = watch.places();
  const bool retains = !options.retained.empty();
  Retained retained;
  if (retains) {
    std::string notices;
    watched.retained = session->retainedVariables();
    retained = loadRetained(options.retained, watched.retained, notices);
    writeStandardError(notices);
  }

  const TemporaryFolder folder;
  std::uint64_t stimulated = 0;
  if (!options.stimulus.empty()) {
    Stimulus stimulus(options.stimulus, places, cycle);
    stimulated = stimulus.writeRows(folder.path() / "stimulus");
    watched.stimulated = stimulus.variables();
  }
  writeFile(folder.path() / "program.c", *text);
  writeFile(folder.path() / "driver.c",
            driverText(*session, statements, variables, options.traceIo, watched));
  if (!retained.bytes.empty()) writeFile(folder.path() / "retained", retained.bytes);
  compile(folder.path(), "program", "-O1", options, guard);
  const std::int64_t wanted = scansOf(options, stimulated);
  if (!execute(*session, folder, options, wanted, retained.clock, watch, guard)) {
    return kProgramErrors;
  }
  auto scans = static_cast<std::uint64_t>(wanted);
  if (options.realtime) scans = reportPace(folder.path() / "pace");
  if (retains) {
    retained.bytes = folder.read("retained");
    retained.clock += static_cast<std::uint32_t>(cycle) * static_cast<std::uint32_t>(scans);
    writeFileToDisk(options.retained, retainedText(retained, watched.retained));
  }
  if (options.watch.writesStandardOutput()) return kSuccess;
  copyToStandardOutput(folder.path() / "refreshes");
  values = printedValues(options.form, places, variables, folder.read("values"));
  return kSuccess;
}

int runEach(const CommonOptions& common, const RunOptions& options) {
  refuseForEach(options);
  refuseOtherOutput(options);
  const bool json = options.form == ValuesForm::Json;
  EachValues all;
  const char* separator = "";
  const int code = forEachFile(options.files, [&](const std::vector<std::string>& file) {
    const std::string name = sourceName(file.front());
    if (!json) writeStandardOutput(fmt::format("{}==> {} <==\n", separator, name));
    separator = "\n";
    std::string values;
    const int ended = runTogether(common, optionsOfOne(options, file.front()), values);
    if (!values.empty()) writeStandardOutput(json ? all.json(name, values) : values);
    return ended;
  });
  if (json) writeStandardOutput(all.jsonEnd());
  return code;
}

int run(const CommonOptions& common, const RunOptions& options) {
  if (options.each) return runEach(common, options);
  std::string values;
  const int code = runTogether(common, options, values);
  writeStandardOutput(values);
  return code;
}

}  // namespace

void addRunCommand(CommandLine& line) {
  Command command =
      line.addCommand("run", "Translate, compile and run programs; print their variables");
  const auto options = std::make_shared<RunOptions>();
  line.addSources(command, options->files);
  addEachOption(command, options->each);
  addRunOptions(command, *options);
  line.setAction(command, options, run);
}

}  // namespace velc
