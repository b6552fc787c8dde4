#include "cli/process.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <spawn.h>
#include <sys/signalfd.h>
#include <sys/syscall.h>
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
constexpr int kMostLeftInPipe = 1 << 20;  // bytes: the usual greatest capacity of a pipe

class Descriptor {
 public:
  Descriptor() : Descriptor(-1) {}
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return descriptor_; }
  void reset(int descriptor) {
    close();
    descriptor_ = descriptor;
  }
  void close() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
  }

 private:
  int descriptor_;
};

struct Pipe {
  void open() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
      throw Failure(fmt::format("cannot make a pipe: {}", std::strerror(errno)));
    }
    readEnd.reset(ends[0]);
    writeEnd.reset(ends[1]);
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
  }

  Descriptor readEnd;
  Descriptor writeEnd;
};

// A child process in a process group of its own, which ends with it.
class Child {
 public:
  // `records` is -1 for none.
  Child(const std::vector<std::string>& arguments, int output, int records, const sigset_t& mask) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
    if (records >= 0) {
      posix_spawn_file_actions_adddup2(&actions, records, ProcessWatch::kRecords);
    }

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
    end_ = static_cast<int>(syscall(SYS_pidfd_open, id_, 0));
    if (end_ >= 0) return;
    const int reason = errno;
    wait();
    throw Failure(fmt::format("cannot watch '{}': {}", arguments[0], std::strerror(reason)));
  }

  ~Child() {
    if (!waited_) wait();
    if (end_ >= 0) ::close(end_);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // Readable when the child has ended, whatever the processes do that it has started.
  int end() const { return end_; }

  void interrupt() const { ::kill(id_, SIGINT); }

  void alarm() const { ::kill(id_, SIGALRM); }

  // Kills what is left of the group, and returns the status of the child. The child is collected
  // last: until then no other group can have its number.
  int wait() {
    ::kill(-id_, SIGKILL);
    int status = 0;
    while (waitpid(id_, &status, 0) < 0 && errno == EINTR) {
    }
    waited_ = true;
    return status;
  }

 private:
  pid_t id_ = -1;
  int end_ = -1;
  bool waited_ = false;
};

int pollTimeout(std::optional<Clock::time_point> deadline) {
  if (!deadline) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now()).count();
  return static_cast<int>(std::clamp<std::int64_t>(left, 0, 60'000));
}

// The output of a child: all of it is read, and the beginning kept.
class Output {
 public:
  explicit Output(int pipe) : pipe_(pipe) {}

  // -1, which poll() ignores, once no process holds the other end.
  int pipe() const { return pipe_; }

  // The number of bytes that were there, up to the size of the buffer.
  int read() {
    const ssize_t count = pipe_ < 0 ? 0 : ::read(pipe_, buffer_.data(), buffer_.size());
    if (count == 0) pipe_ = -1;
    if (count <= 0) return 0;
    text_.append(buffer_.data(),
                 std::min(static_cast<std::size_t>(count), kMaxOutput - text_.size()));
    return static_cast<int>(count);
  }

  std::string rest() {
    // Another process may still hold the pipe, and write.
    int left = kMostLeftInPipe;
    for (int count = read(); count > 0 && left > 0; count = read()) left -= count;
    return std::move(text_);
  }

 private:
  int pipe_;
  std::array<char, 4096> buffer_;
  std::string text_;
};

// Passes records on.
class Records {
 public:
  Records(int pipe, RecordSink* sink) : pipe_(sink == nullptr ? -1 : pipe), sink_(sink) {}

  int pipe() const { return pipe_; }

  // The number of bytes that were there, up to the size of the buffer.
  int pass() {
    const ssize_t count = pipe_ < 0 ? 0 : ::read(pipe_, buffer_.data(), buffer_.size());
    if (count == 0) pipe_ = -1;
    if (count <= 0) return 0;
    sink_->take({buffer_.data(), static_cast<std::size_t>(count)});
    return static_cast<int>(count);
  }

  void passRest() {
    int left = kMostLeftInPipe;
    for (int count = pass(); count > 0 && left > 0; count = pass()) left -= count;
  }

 private:
  int pipe_;
  RecordSink* sink_;
  std::array<char, 65536> buffer_;
};

// Throws Terminated unless the signal is one that asks the child to end in order.
void handleSignal(const Child& child, int descriptor, bool endsInOrder) {
  signalfd_siginfo info{};
  if (!endsInOrder) throw Terminated{};
  const bool read = ::read(descriptor, &info, sizeof info) == sizeof info;
  if (read && info.ssi_signo != SIGINT && info.ssi_signo != SIGTERM) {
    ::raise(static_cast<int>(info.ssi_signo));  // it is pending again
    throw Terminated{};
  }
  child.interrupt();
}

// Reads until the child has ended. False when the deadline comes first.
bool awaitEnd(const Child& child, Output& output, Records& records, int terminationSignal,
              bool endsInOrder, std::optional<Clock::time_point> deadline) {
  for (;;) {
    std::array<pollfd, 4> events{{{child.end(), POLLIN, 0},
                                  {terminationSignal, POLLIN, 0},
                                  {output.pipe(), POLLIN, 0},
                                  {records.pipe(), POLLIN, 0}}};
    poll(events.data(), events.size(), pollTimeout(deadline));
    if (events[1].revents != 0) {
      handleSignal(child, terminationSignal, endsInOrder);
      endsInOrder = false;
    }
    if (events[0].revents != 0) return true;
    if (deadline && Clock::now() >= *deadline) return false;
    if (events[2].revents != 0) output.read();
    if (events[3].revents != 0) {
      const Clock::time_point begin = Clock::now();
      records.pass();
      if (deadline) *deadline += Clock::now() - begin;
    }
  }
}

}  // namespace

ProcessResult runProcess(const std::vector<std::string>& arguments, const TerminationGuard& guard,
                         std::optional<std::chrono::milliseconds> timeout,
                         const ProcessWatch& watch) {
  Pipe outputPipe;
  Pipe recordPipe;
  outputPipe.open();
  if (watch.records != nullptr) recordPipe.open();
  Child child(arguments, outputPipe.writeEnd.get(), recordPipe.writeEnd.get(), guard.outerMask());
  outputPipe.writeEnd.close();
  recordPipe.writeEnd.close();

  Output output(outputPipe.readEnd.get());
  Records records(recordPipe.readEnd.get(), watch.records);
  std::optional<Clock::time_point> deadline;
  if (timeout) deadline = Clock::now() + *timeout;
  const bool ended =
      awaitEnd(child, output, records, guard.descriptor(), watch.endsInOrder, deadline);
  if (!ended && watch.reports) {
    constexpr std::chrono::seconds kMoment{2};
    child.alarm();
    awaitEnd(child, output, records, guard.descriptor(), watch.endsInOrder, Clock::now() + kMoment);
  }
  const int status = child.wait();
  ProcessResult result;
  result.output = output.rest();
  records.passRest();
  if (!ended) {
    result.end = ProcessResult::End::TimedOut;
  } else if (WIFSIGNALED(status)) {
    result.end = ProcessResult::End::Signalled;
    result.code = WTERMSIG(status);
  } else {
    result.code = WEXITSTATUS(status);
  }
  return result;
}

}  // namespace velc
