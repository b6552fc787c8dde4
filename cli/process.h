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
  int code = 0;        // exit status, or the number of the signal that ended it
  std::string output;  // standard output and standard error, truncated if very long

  bool succeeded() const { return end == End::Exited && code == 0; }
};

// Runs `arguments[0]`, looked up in PATH, with empty standard input. When it has ended, and after
// `timeout`, kills the processes that it has started and does not wait for them. Throws Failure
// when it cannot be started, and Terminated when a signal asks velc to terminate meanwhile.
ProcessResult runProcess(const std::vector<std::string>& arguments, const TerminationGuard& guard,
                         std::optional<std::chrono::milliseconds> timeout = std::nullopt);

}  // namespace velc
