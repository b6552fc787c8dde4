#include "cli/output_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "cli/failure.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void failToWrite(const std::string& what, int error) {
  throw Failure(fmt::format("cannot write {}: {}", what, std::strerror(error)));
}

// Returns 0 or the value of errno.
int writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(descriptor, text.data(), text.size());
    if (count >= 0) {
      text.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

// The same. Throws Terminated if a signal arrives that asks to terminate while nobody reads.
int writeAll(int descriptor, std::string_view text, const TerminationGuard& guard) {
  // A pipe that is ready for writing takes this much without blocking.
  constexpr std::size_t kChunk = PIPE_BUF;
  for (; !text.empty(); text.remove_prefix(std::min(kChunk, text.size()))) {
    std::array<pollfd, 2> events{{{descriptor, POLLOUT, 0}, {guard.descriptor(), POLLIN, 0}}};
    while (poll(events.data(), events.size(), -1) < 0) {
    }
    if (events[0].revents == 0) throw Terminated{};
    if (const int error = writeAll(descriptor, text.substr(0, kChunk)); error != 0) return error;
  }
  return 0;
}

// Opens a pipe or a device. Throws Terminated if a signal arrives that asks to terminate while
// nobody opens the pipe to read.
int openToWrite(const char* path, const TerminationGuard& guard) {
  constexpr int kMilliseconds = 20;  // between two attempts
  int descriptor = -1;
  while ((descriptor = open(path, O_WRONLY | O_CLOEXEC | O_NONBLOCK)) < 0 && errno == ENXIO) {
    pollfd event{guard.descriptor(), POLLIN, 0};
    if (poll(&event, 1, kMilliseconds) > 0) throw Terminated{};
    struct stat status {};
    if (stat(path, &status) != 0 || !S_ISFIFO(status.st_mode)) {
      errno = ENXIO;
      return -1;
    }
  }
  if (descriptor >= 0) fcntl(descriptor, F_SETFL, O_WRONLY);
  return descriptor;
}

mode_t defaultMode(mode_t mode) {
  const mode_t mask = umask(0);
  umask(mask);
  return mode & ~mask;
}

// The name of a file is kept by its folder.
void waitForFolderOf(const std::string& path) {
  const fs::path parent = fs::path(path).parent_path();
  const int folder = open(parent.empty() ? "." : parent.c_str(), O_RDONLY | O_CLOEXEC);
  if (folder < 0) return;
  fsync(folder);
  close(folder);
}

void writeTo(const std::string& path, std::string_view text, GrowingFile::Wait wait,
             mode_t mode = GrowingFile::kReadable) {
  const TerminationGuard guard;
  GrowingFile file(path, guard, mode);
  file.write(text);
  file.replace(wait);
}

}  // namespace

void writeStandardOutput(std::string_view text) {
  if (const int error = writeAll(STDOUT_FILENO, text); error != 0)
    failToWrite("standard output", error);
}

void writeStandardOutput(std::string_view text, const TerminationGuard& guard) {
  const int error = writeAll(STDOUT_FILENO, text, guard);
  if (error != 0) failToWrite("standard output", error);
}

void writeStandardError(std::string_view text) {
  if (const int error = writeAll(STDERR_FILENO, text); error != 0)
    failToWrite("standard error", error);
}

GrowingFile::GrowingFile(const std::string& path, const TerminationGuard& guard, mode_t mode)
    : path_(path), guard_(guard) {
  struct stat status {};
  const bool exists = stat(path.c_str(), &status) == 0;
  if (exists && !S_ISREG(status.st_mode)) {
    descriptor_ = openToWrite(path.c_str(), guard);
    if (descriptor_ < 0) fail(errno);
    return;
  }
  // For a symbolic link, replaces its target and keeps the link.
  std::error_code error;
  const fs::path target = exists ? fs::canonical(path, error) : fs::path(path);
  target_ = error ? path : target.native();
  std::string name = target_ + ".XXXXXX";
  descriptor_ = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor_ < 0) fail(errno);
  temporary_ = name;
  const mode_t wanted =
      exists ? (status.st_mode & 07777) | defaultMode(mode & 0111) : defaultMode(mode);
  // Only as far as the process may give files away.
  if (exists && fchown(descriptor_, status.st_uid, status.st_gid) != 0) errno = 0;
  if (fchmod(descriptor_, wanted) != 0) fail(errno);
}

GrowingFile::~GrowingFile() {
  if (descriptor_ >= 0) close(descriptor_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void GrowingFile::write(std::string_view text) {
  const int error =
      target_.empty() ? writeAll(descriptor_, text, guard_) : writeAll(descriptor_, text);
  if (error != 0) fail(error);
}

void GrowingFile::replace(Wait wait) {
  int error = 0;
  if (!target_.empty() && wait == Wait::ForDisk && fsync(descriptor_) != 0) error = errno;
  if (close(descriptor_) != 0 && error == 0) error = errno;
  descriptor_ = -1;
  if (target_.empty() && error == 0) return;
  if (error == 0 && std::rename(temporary_.c_str(), target_.c_str()) != 0) error = errno;
  if (error != 0) fail(error);
  temporary_.clear();
  if (wait == Wait::ForDisk) waitForFolderOf(target_);
}

void GrowingFile::fail(int error) {
  // A constructor that throws is not followed by the destructor.
  if (descriptor_ >= 0) close(descriptor_);
  descriptor_ = -1;
  if (!temporary_.empty()) unlink(temporary_.c_str());
  temporary_.clear();
  failToWrite(path_, error);
}

void writeFile(const std::string& path, std::string_view text) {
  writeTo(path, text, GrowingFile::Wait::No);
}

void writeProgram(const std::string& path, std::string_view text) {
  writeTo(path, text, GrowingFile::Wait::No, 0777);
}

void writeFileToDisk(const std::string& path, std::string_view text) {
  writeTo(path, text, GrowingFile::Wait::ForDisk);
}

}  // namespace velc
