// Defers signals that ask velc to terminate, so that it can clean up first.
#pragma once

#include <csignal>

namespace velc {

// While the object lives, SIGINT, SIGTERM, SIGHUP and SIGQUIT are blocked. Those that arrive
// meanwhile take effect after its destruction. Signals that velc ignores stay ignored.
class TerminationGuard {
 public:
  TerminationGuard();
  ~TerminationGuard();
  TerminationGuard(const TerminationGuard&) = delete;
  TerminationGuard& operator=(const TerminationGuard&) = delete;

  // Readable when such a signal is pending.
  int descriptor() const { return descriptor_; }
  // The signal mask before construction, to be set in child processes.
  const sigset_t& outerMask() const { return outerMask_; }

 private:
  sigset_t outerMask_;
  int descriptor_;
};

// Thrown when such a signal is pending, to unwind up to the guard, whose destruction lets the
// signal end the process.
struct Terminated {};

}  // namespace velc
