// Runs other programs, without a shell.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
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

// Gets the records that a process writes.
class RecordSink {
 public:
  virtual ~RecordSink() = default;
  // The next bytes, in pieces of any size. May throw, which ends the process.
  virtual void take(std::string_view bytes) = 0;
};

struct ProcessWatch {
  // Gets what the process writes to the descriptor kRecords; null for none. The time that it takes
  // does not count for the timeout.
  RecordSink* records = nullptr;
  // The first SIGINT or SIGTERM only asks the process to end, by SIGINT.
  bool endsInOrder = false;
  // After the timeout the process gets SIGALRM and a moment to report where it is.
  bool reports = false;

  static constexpr int kRecords = 3;
};

// Runs `arguments[0]`, looked up in PATH, with empty standard input. When it has ended, and after
// `timeout`, kills the processes that it has started and does not wait for them. Throws Failure
// when it cannot be started, and Terminated when a signal asks velc to terminate meanwhile.
ProcessResult runProcess(const std::vector<std::string>& arguments, const TerminationGuard& guard,
                         std::optional<std::chrono::milliseconds> timeout = std::nullopt,
                         const ProcessWatch& watch = {});

}  // namespace velc
