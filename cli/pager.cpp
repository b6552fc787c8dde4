#include "cli/pager.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>

#include "cli/output_file.h"

namespace velc {

namespace {

// Does without less where it is not installed.
constexpr const char* kDefaultPager =
    "if command -v less >/dev/null; then exec less; else exec cat; fi";

// Keyboard signals are for the pager, which decides what they do.
class KeyboardSignals {
 public:
  KeyboardSignals()
      : interrupt_(std::signal(SIGINT, SIG_IGN)), quit_(std::signal(SIGQUIT, SIG_IGN)) {}
  ~KeyboardSignals() {
    std::signal(SIGINT, interrupt_);
    std::signal(SIGQUIT, quit_);
  }
  KeyboardSignals(const KeyboardSignals&) = delete;
  KeyboardSignals& operator=(const KeyboardSignals&) = delete;

 private:
  using Handler = void (*)(int);
  Handler interrupt_;
  Handler quit_;
};

// Starts the shell's `command`, which reads from `input` and has the signals as velc found them.
// Returns -1 on failure.
pid_t start(const char* command, int input) {
  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
  sigset_t defaults;
  sigemptyset(&defaults);
  for (const int signal : {SIGINT, SIGQUIT, SIGPIPE, SIGXFSZ}) sigaddset(&defaults, signal);
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setsigdefault(&attributes, &defaults);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  std::string shell = "sh";
  std::string option = "-c";
  std::string text = command;
  char* const arguments[] = {shell.data(), option.data(), text.data(), nullptr};
  pid_t process = -1;
  if (posix_spawn(&process, "/bin/sh", &actions, &attributes, arguments, environ) != 0) {
    process = -1;
  }
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  return process;
}

// The reader may leave before the end.
void writeUntilClosed(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(descriptor, text.data(), text.size());
    if (count < 0 && errno != EINTR) return;
    if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
  }
}

// False if the command cannot be run.
bool pageWith(const char* command, std::string_view text) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return false;
  const KeyboardSignals signals;
  const pid_t process = start(command, ends[0]);
  close(ends[0]);
  if (process >= 0) writeUntilClosed(ends[1], text);
  close(ends[1]);
  if (process < 0) return false;
  constexpr int kNotFound = 127;
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return !WIFEXITED(status) || WEXITSTATUS(status) < kNotFound - 1;
}

}  // namespace

void writePaged(std::string_view text) {
  const char* const named = std::getenv("PAGER");
  const std::string_view pager = named == nullptr ? "" : named;
  const bool wanted = pager != "cat" && (named == nullptr || !pager.empty());
  if (wanted && isatty(STDOUT_FILENO) != 0) {
    // Quit if it fits on one screen, pass colours on, and leave the text on the screen.
    setenv("LESS", "FRX", 0);
    if (pageWith(named == nullptr ? kDefaultPager : named, text)) return;
  }
  writeStandardOutput(text);
}

}  // namespace velc
