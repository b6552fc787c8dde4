#include "lsp/process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace lsp {

namespace {

void closeDescriptor(int& descriptor) {
  if (descriptor >= 0) close(descriptor);
  descriptor = -1;
}

struct Pipe {
  Pipe() {
    if (pipe2(ends.data(), O_CLOEXEC) != 0) ends = {-1, -1};
  }
  ~Pipe() {
    for (int& end : ends) closeDescriptor(end);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  bool good() const { return ends[0] >= 0; }
  int takeReader() { return std::exchange(ends[0], -1); }

  std::array<int, 2> ends{-1, -1};
};

bool hasInput(int descriptor) {
  pollfd waited{descriptor, POLLIN, 0};
  return poll(&waited, 1, 0) > 0;
}

// Closes the descriptor at the end of what comes.
void readAvailable(int& descriptor, std::string& text) {
  std::array<char, 4096> buffer;
  while (descriptor >= 0 && hasInput(descriptor)) {
    const ssize_t count = read(descriptor, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return closeDescriptor(descriptor);
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

}  // namespace

bool BackgroundProcess::start(const std::vector<std::string>& arguments,
                              const std::string& folder) {
  stop();
  Pipe output;
  Pipe errors;
  if (!output.good() || !errors.good()) return false;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, output.ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, errors.ends[1], STDERR_FILENO);
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) {
    pointers.push_back(const_cast<char*>(argument.c_str()));
  }
  pointers.push_back(nullptr);
  pid_t process = -1;
  const int failed =
      posix_spawn(&process, pointers[0], &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failed != 0) return false;
  process_ = process;
  output_ = output.takeReader();
  errors_ = errors.takeReader();
  result_ = {};
  return true;
}

void BackgroundProcess::stop() {
  closeDescriptor(output_);
  closeDescriptor(errors_);
  if (process_ <= 0) return;
  kill(process_, SIGTERM);
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
  process_ = -1;
}

bool BackgroundProcess::takeOutput(Result& result) {
  readAvailable(output_, result_.output);
  readAvailable(errors_, result_.errors);
  if (process_ <= 0 || output_ >= 0 || errors_ >= 0) return false;
  int status = 0;
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  process_ = -1;
  result = std::move(result_);
  result.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return true;
}

}  // namespace lsp
