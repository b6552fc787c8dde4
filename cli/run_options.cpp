#include "cli/run_options.h"

#include <CLI/CLI.hpp>

#include "hostkit/literal.h"

namespace velc {

namespace {

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

}  // namespace

void addCompilerOptions(CLI::App& command, std::string& compiler, std::chrono::seconds& timeout,
                        const char* timed) {
  command.add_option("--compiler", compiler, "The C compiler")
      ->type_name("CC")
      ->capture_default_str();
  command
      .add_option_function<int>(
          "--timeout", [&timeout](int seconds) { timeout = std::chrono::seconds(seconds); }, timed)
      ->type_name("SECONDS")
      ->check(CLI::Range(1, 1'000'000));
}

void addRunOptions(CLI::App& command, RunOptions& options) {
  command.add_option("--scans", options.scans, "Scans of every PROGRAM")
      ->type_name("N")
      ->check(CLI::Range(std::int64_t{0}, std::int64_t{1} << 62))
      ->capture_default_str();
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
                  "Print a global variable or what stands at a device address after the variables "
                  "(repeatable)")
      ->type_name("PLACE")
      ->allow_extra_args(false);
  command
      .add_option("--retain", options.retained,
                  "Load retained variables from this file before the first scan, and store them "
                  "behind the last")
      ->type_name("FILE")
      ->check(CLI::Validator(
          [](std::string& file) { return file.empty() ? std::string("no file") : std::string(); },
          ""));
  command.add_flag("--trace-io", options.traceIo, "Print each refresh of local I/O");
  addCompilerOptions(command, options.compiler, options.timeout,
                     "Seconds that compiling may take, and then the program (default: 60)");
}

}  // namespace velc
