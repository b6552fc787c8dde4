#include "cli/process.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "cli/failure.h"

namespace velc {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMaxOutput = 65536;

class Descriptor {
 public:
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return descriptor_; }
  void close() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
  }

 private:
  int descriptor_;
};

// A child process in a process group of its own.
class Child {
 public:
  Child(const std::vector<std::string>& arguments, int output, const sigset_t& mask) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);

    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    for (const int ignored : {SIGPIPE, SIGXFSZ}) sigaddset(&defaults, ignored);  // see main()
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setsigmask(&attributes, &mask);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(
        &attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments) {
      argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    const int error = posix_spawnp(&id_, argv[0], &actions, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
      throw Failure(fmt::format("cannot start '{}': {}", arguments[0], std::strerror(error)));
    }
  }

  ~Child() {
    if (!waited_) kill();
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  int wait() {
    int status = 0;
    while (waitpid(id_, &status, 0) < 0 && errno == EINTR) {
    }
    waited_ = true;
    return status;
  }

  void kill() {
    ::kill(-id_, SIGKILL);
    wait();
  }

 private:
  pid_t id_ = -1;
  bool waited_ = false;
};

int pollTimeout(std::optional<Clock::time_point> deadline) {
  if (!deadline) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now()).count();
  return static_cast<int>(std::clamp<std::int64_t>(left, 0, 60'000));
}

// Reads until all writers of the pipe have closed it, as the child does when it ends. False when
// the deadline comes first.
bool readOutput(int pipe, int terminationSignal, std::optional<Clock::time_point> deadline,
                std::string& output) {
  std::array<char, 4096> buffer;
  for (;;) {
    std::array<pollfd, 2> events{{{pipe, POLLIN, 0}, {terminationSignal, POLLIN, 0}}};
    const int ready = poll(events.data(), events.size(), pollTimeout(deadline));
    if (events[1].revents != 0) throw Terminated{};
    if (deadline && Clock::now() >= *deadline) return false;
    if (ready <= 0) continue;
    const ssize_t count = read(pipe, buffer.data(), buffer.size());
    if (count == 0) return true;
    if (count < 0) continue;
    const std::size_t room = kMaxOutput - output.size();
    output.append(buffer.data(), std::min(static_cast<std::size_t>(count), room));
  }
}

}  // namespace

ProcessResult runProcess(const std::vector<std::string>& arguments, const TerminationGuard& guard,
                         std::optional<std::chrono::milliseconds> timeout) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    throw Failure(fmt::format("cannot make a pipe: {}", std::strerror(errno)));
  }
  const Descriptor readEnd(ends[0]);
  Descriptor writeEnd(ends[1]);
  Child child(arguments, writeEnd.get(), guard.outerMask());
  writeEnd.close();

  ProcessResult result;
  std::optional<Clock::time_point> deadline;
  if (timeout) deadline = Clock::now() + *timeout;
  if (!readOutput(readEnd.get(), guard.descriptor(), deadline, result.output)) {
    child.kill();
    result.end = ProcessResult::End::TimedOut;
    return result;
  }
  const int status = child.wait();
  const bool signalled = WIFSIGNALED(status);
  result.end = signalled ? ProcessResult::End::Signalled : ProcessResult::End::Exited;
  result.code = signalled ? WTERMSIG(status) : WEXITSTATUS(status);
  return result;
}

}  // namespace velc
