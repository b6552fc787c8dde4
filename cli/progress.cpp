#include "cli/progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <utility>

namespace velc {
namespace {

using Clock = std::chrono::steady_clock;
const Clock::time_point kBegin = Clock::now();

}  // namespace

Progress::Progress(std::string phase) : phase_(std::move(phase)) {
  if (isatty(STDERR_FILENO) == 0) return;
  // Block all signals in the new thread, so that the main thread gets them.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  thread_ = std::thread([this] { show(); });
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

Progress::~Progress() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    done_ = true;
  }
  ended_.notify_one();
  thread_.join();
}

void Progress::show() {
  constexpr std::chrono::seconds kPatience{1};
  constexpr std::chrono::milliseconds kInterval{200};
  constexpr const char* kClearLine = "\r\x1b[K";
  bool shown = false;
  std::unique_lock<std::mutex> lock(mutex_);
  for (auto next = kBegin + kPatience; !ended_.wait_until(lock, next, [this] { return done_; });
       next = Clock::now() + kInterval) {
    const auto elapsed = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - kBegin);
    fmt::print(stderr, "{}{}, {} s", kClearLine, phase_, elapsed.count());
    shown = true;
  }
  if (shown) fmt::print(stderr, "{}", kClearLine);
}

}  // namespace velc
