#include "cli/run_options.h"

#include <CLI/CLI.hpp>

#include "hostkit/literal.h"

namespace velc {

namespace {

TraceFormat traceFormat(const std::string& name) {
  if (name == "json") return TraceFormat::Json;
  return name == "vcd" ? TraceFormat::Vcd : TraceFormat::Csv;
}

// Parses a TIME literal into milliseconds.
std::int64_t durationOf(const std::string& text) {
  hostkit::LiteralValue value;
  const bool time = hostkit::parseLiteral(text, value) == hostkit::LiteralError::None &&
                    value.type == vel::BasicDataType::Time;
  if (!time || value.ticks < 0) {
    throw CLI::ValidationError("--cycle", text + " is not a TIME of 0 or more, such as T#10ms");
  }
  return value.ticks;
}

// Checks that a file has a name.
CLI::Validator named() {
  return CLI::Validator(
      [](std::string& file) { return file.empty() ? std::string("no file") : std::string(); }, "");
}

void addTraceOptions(CLI::App& command, WatchOptions& options) {
  CLI::Option* const trace =
      command
          .add_option("--trace", options.traced,
                      "Write the values of these places behind each scan; * for all variables")
          ->type_name("PLACE");
  command
      .add_option_function<std::string>(
          "--trace-format",
          [&options](const std::string& name) {
            options.format = traceFormat(name);
            options.formatSaid = true;
          },
          "Form of the trace (default: csv)")
      ->type_name("FORM")
      ->check(CLI::IsMember({"csv", "json", "vcd"}))
      ->needs(trace);
  command
      .add_option("-o,--output", options.output, "Where the trace goes (default: standard output)")
      ->type_name("FILE")
      ->check(named())
      ->needs(trace);
  command.add_flag("--changes", options.changesOnly, "Trace only scans that change something")
      ->needs(trace);
  command.add_option("--plot", options.plot, "Draw the traced variables over time")
      ->type_name("FILE.svg")
      ->check(named())
      ->needs(trace);
}

void addWatchOptions(CLI::App& command, RunOptions& options) {
  addTraceOptions(command, options.watch);
  command
      .add_option("--stimulus", options.stimulus,
                  "Values from this file, a column 'time' or 'scan' and columns named like "
                  "--trace, hold from their rows on")
      ->type_name("FILE.csv")
      ->check(named());
  command.add_flag("--realtime", options.realtime,
                   "Begin scans by the clock, and tell how late they were; Ctrl-C ends the run");
  command
      .add_option_function<std::string>(
          "--format",
          [&options](const std::string& name) {
            options.form = name == "json" ? ValuesForm::Json : ValuesForm::Text;
          },
          "Form of the variables that are printed (default: text)")
      ->type_name("FORM")
      ->check(CLI::IsMember({"text", "json"}));
}

}  // namespace

CLI::Option* addCompilerOptions(CLI::App& command, std::string& compiler,
                                std::chrono::seconds& timeout, const char* timed) {
  command.add_option("--compiler", compiler, "The C compiler")
      ->type_name("CC")
      ->capture_default_str();
  return command
      .add_option_function<int>(
          "--timeout", [&timeout](int seconds) { timeout = std::chrono::seconds(seconds); }, timed)
      ->type_name("SECONDS")
      ->check(CLI::Range(1, 1'000'000));
}

void addRunOptions(CLI::App& command, RunOptions& options) {
  command
      .add_option("--scans", options.scans,
                  "Scans of every PROGRAM (default: 1, or all of --stimulus; with --realtime until "
                  "Ctrl-C)")
      ->type_name("N")
      ->check(CLI::Range(std::int64_t{0}, std::int64_t{1} << 62));
  command
      .add_option_function<std::string>(
          "--cycle", [&options](const std::string& text) { options.cycle = durationOf(text); },
          "Time that passes for the programs from one scan to the next (default: T#10ms)")
      ->type_name("TIME");
  command
      .add_option("--set", options.settings,
                  "Give a variable or a device address a value before the first scan (repeatable)")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  command
      .add_option("--show", options.shown,
                  "Print a place that is not printed anyway: a global variable, timer.ET, %QB1 "
                  "(repeatable)")
      ->type_name("PLACE")
      ->allow_extra_args(false);
  command
      .add_option("--retain", options.retained,
                  "Load retained variables from this file before the first scan, and store them "
                  "behind the last")
      ->type_name("FILE")
      ->check(named());
  addWatchOptions(command, options);
  command.add_flag("--trace-io", options.traceIo, "Print each refresh of local I/O");
  addCompilerOptions(command, options.compiler, options.timeout,
                     "Seconds that compiling may take, and then the program (default: 60; with "
                     "--realtime the program has no limit)")
      ->each([&options](const std::string&) { options.timeoutSaid = true; });
}

}  // namespace velc
