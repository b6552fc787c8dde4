// The options of `velc run`.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/printed_values.h"
#include "cli/trace/trace.h"

namespace velc {

struct WatchOptions {
  std::vector<std::string> traced;  // names of places, and patterns
  TraceFormat format = TraceFormat::Csv;
  bool changesOnly = false;
  std::string output;  // of the trace; "-" for standard output; empty when not said
  std::string plot;    // empty for none
  bool formatSaid = false;

  // A trace that is drawn is written only if that is asked for.
  bool writesText() const {
    return !traced.empty() && (plot.empty() || !output.empty() || formatSaid);
  }
  bool writesFile() const { return writesText() && !output.empty() && output != "-"; }
  bool writesStandardOutput() const { return writesText() && !writesFile(); }
};

struct RunOptions {
  std::vector<std::string> files;
  bool each = false;                  // each file is a program of its own
  std::vector<std::string> settings;  // NAME=VALUE
  std::vector<std::string> shown;     // places that are printed, too
  std::string retained;               // file of retained variables; empty for none
  bool traceIo = false;
  WatchOptions watch;
  std::string stimulus;  // a file; empty for none
  ValuesForm form = ValuesForm::Text;
  std::string compiler = "cc";
  // When not said: all of the stimulus, or endlessly in real time, or one.
  std::optional<std::int64_t> scans;
  std::int64_t cycle = 10;  // milliseconds from one scan to the next
  bool realtime = false;
  std::chrono::seconds timeout{60};  // of compiling, and of the program
  bool timeoutSaid = false;          // otherwise a program in real time has none
};

// Adds the options of commands that compile C, and returns the one for `timeout`.
Option addCompilerOptions(Command& command, std::string& compiler, std::chrono::seconds& timeout,
                          const char* timed);

// Adds all of them but the files, and binds them to `options`.
void addRunOptions(Command& command, RunOptions& options);

}  // namespace velc
