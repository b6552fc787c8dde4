// Holds back the signals that ask velc to end, while there is something to clear up.
#pragma once

#include <csignal>

namespace velc {

// While it lives, SIGINT, SIGTERM, SIGHUP and SIGQUIT wait; what arrived meanwhile takes its
// usual effect when it goes. Signals that are ignored anyway stay so.
class TerminationGuard {
 public:
  TerminationGuard();
  ~TerminationGuard();
  TerminationGuard(const TerminationGuard&) = delete;
  TerminationGuard& operator=(const TerminationGuard&) = delete;

  // Readable as soon as such a signal waits.
  int descriptor() const { return descriptor_; }
  // The signal mask outside, which child processes get.
  const sigset_t& outerMask() const { return outerMask_; }

 private:
  sigset_t outerMask_;
  int descriptor_;
};

// Thrown to unwind when such a signal waits; the guard then ends the process.
struct Terminated {};

}  // namespace velc
