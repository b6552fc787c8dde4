#include "cli/run_options.h"

#include <filesystem>

#include "hostkit/literal.h"

namespace velc {

namespace {

// Parses a TIME literal into milliseconds, and returns what is wrong with it.
std::string parseCycle(const std::string& text, std::int64_t& milliseconds) {
  hostkit::LiteralValue value;
  const bool time = hostkit::parseLiteral(text, value) == hostkit::LiteralError::None &&
                    value.type == vel::BasicDataType::Time;
  if (!time || value.ticks < 0) return text + " is not a TIME of 0 or more, such as T#10ms";
  milliseconds = value.ticks;
  return "";
}

// Takes the name of a plot, and returns what is wrong with it.
std::string takePlot(const std::string& file, std::string& plot) {
  const std::string ending = std::filesystem::path(file).extension();
  if (ending == ".png" || ending == ".pdf" || ending == ".jpg") {
    return file + " would be an SVG all the same; rsvg-convert makes others of it";
  }
  plot = file;
  return "";
}

void addTraceOptions(Command& command, WatchOptions& options) {
  const Option trace =
      command
          .option("--trace", options.traced,
                  "Write the values of these places behind each scan; * for all variables")
          .value("PLACE");
  command
      .choice<TraceFormat>(
          "--trace-format", options.format,
          {{"csv", TraceFormat::Csv}, {"json", TraceFormat::Json}, {"vcd", TraceFormat::Vcd}},
          "Form of the trace (default: csv)")
      .value("FORM")
      .tells(options.formatSaid)
      .needs(trace);
  command.option("-o,--output", options.output, "Where the trace goes (default: standard output)")
      .value("FILE")
      .notEmpty()
      .needs(trace);
  command.flag("--changes", options.changesOnly, "Trace only scans that change something")
      .needs(trace);
  command
      .call(
          "--plot", [&options](const std::string& file) { return takePlot(file, options.plot); },
          "Draw the traced variables over time")
      .value("FILE.svg")
      .file()
      .needs(trace);
}

void addWatchOptions(Command& command, RunOptions& options) {
  addTraceOptions(command, options.watch);
  command
      .option("--stimulus", options.stimulus,
              "Values from this file, a column 'time' or 'scan' and columns named like "
              "--trace, hold from their rows on")
      .value("FILE.csv")
      .notEmpty();
  command.flag("--realtime", options.realtime,
               "Begin scans by the clock, and tell how late they were; Ctrl-C ends the run");
  command
      .choice<ValuesForm>("--format", options.form,
                          {{"text", ValuesForm::Text}, {"json", ValuesForm::Json}},
                          "Form of the variables that are printed (default: text)")
      .value("FORM");
}

}  // namespace

Option addCompilerOptions(Command& command, std::string& compiler, std::chrono::seconds& timeout,
                          const char* timed) {
  command.option("--compiler", compiler, "The C compiler").value("CC").showDefault();
  return command.seconds("--timeout", timeout, timed);
}

void addRunOptions(Command& command, RunOptions& options) {
  command
      .number("--scans", options.scans, std::int64_t{0}, std::int64_t{1} << 62,
              "Scans of every PROGRAM (default: 1, or all of --stimulus; with --realtime until "
              "Ctrl-C)")
      .value("N");
  command
      .call(
          "--cycle",
          [&options](const std::string& text) { return parseCycle(text, options.cycle); },
          "Time that passes for the programs from one scan to the next (default: T#10ms)")
      .value("TIME");
  command
      .option("--set", options.settings,
              "Give a variable or a device address a value before the first scan (repeatable)")
      .value("NAME=VALUE")
      .oneAtATime();
  command
      .option("--show", options.shown,
              "Print a place that is not printed anyway: a global variable, timer.ET, %QB1 "
              "(repeatable)")
      .value("PLACE")
      .oneAtATime();
  command
      .option("--retain", options.retained,
              "Load retained variables from this file before the first scan, and store them "
              "behind the last")
      .value("FILE")
      .file();
  addWatchOptions(command, options);
  command.flag("--trace-io", options.traceIo, "Print each refresh of local I/O");
  addCompilerOptions(command, options.compiler, options.timeout,
                     "Seconds that compiling may take, and then the program (default: 60; with "
                     "--realtime the program has no limit)")
      .tells(options.timeoutSaid);
}

}  // namespace velc
