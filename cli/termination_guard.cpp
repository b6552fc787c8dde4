#include "cli/termination_guard.h"

#include <fmt/format.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "cli/failure.h"

namespace velc {

TerminationGuard::TerminationGuard() {
  sigset_t held;
  sigemptyset(&held);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
    struct sigaction action {};
    if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
      sigaddset(&held, signal);
    }
  }
  descriptor_ = signalfd(-1, &held, SFD_CLOEXEC);
  if (descriptor_ < 0) throw Failure(fmt::format("cannot watch signals: {}", std::strerror(errno)));
  sigprocmask(SIG_BLOCK, &held, &outerMask_);
}

TerminationGuard::~TerminationGuard() {
  close(descriptor_);
  sigprocmask(SIG_SETMASK, &outerMask_, nullptr);
}

}  // namespace velc
