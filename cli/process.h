// Runs other programs, without a shell.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "cli/termination_guard.h"

namespace velc {

struct ProcessResult {
  enum class End { Exited, Signalled, TimedOut };

  End end = End::Exited;
  int code = 0;        // exit status, or the number of the signal
  std::string output;  // what it wrote to standard output and standard error, cut if very long

  bool succeeded() const { return end == End::Exited && code == 0; }
};

// Runs `arguments[0]`, looked up in PATH, with no standard input, to its end or for
// `timeout` at most; then it is ended with all that it started. Throws Failure when
// it cannot be started, Terminated when velc is asked to end meanwhile.
ProcessResult runProcess(const std::vector<std::string>& arguments, const TerminationGuard& guard,
                         std::optional<std::chrono::milliseconds> timeout = std::nullopt);

}  // namespace velc
