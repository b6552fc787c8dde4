#include "cli/output_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "cli/failure.h"
#include "cli/termination_guard.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& what, int error) {
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

int writeAndClose(int descriptor, std::string_view text) {
  const int error = writeAll(descriptor, text);
  const int closeError = close(descriptor) == 0 ? 0 : errno;
  return error != 0 ? error : closeError;
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

enum class Wait : bool { No, ForDisk };

void replaceFile(const std::string& path, mode_t mode, std::string_view text, Wait wait) {
  const TerminationGuard guard;
  std::string temporary = path + ".XXXXXX";
  const int descriptor = mkostemp(temporary.data(), O_CLOEXEC);
  if (descriptor < 0) fail(path, errno);
  int error = fchmod(descriptor, mode) == 0 ? 0 : errno;
  const int writeError = writeAll(descriptor, text);
  if (error == 0) error = writeError;
  if (error == 0 && wait == Wait::ForDisk && fsync(descriptor) != 0) error = errno;
  if (close(descriptor) != 0 && error == 0) error = errno;
  if (error == 0 && std::rename(temporary.c_str(), path.c_str()) != 0) error = errno;
  if (error == 0 && wait == Wait::ForDisk) waitForFolderOf(path);
  if (error == 0) return;
  unlink(temporary.c_str());
  fail(path, error);
}

// Replaces a regular file, and writes to anything else.
void writeTo(const std::string& path, std::string_view text, Wait wait, mode_t mode = 0666) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    replaceFile(path, defaultMode(mode), text, wait);
  } else if (S_ISREG(status.st_mode)) {
    // For a symbolic link, replaces its target and keeps the link.
    std::error_code error;
    const fs::path target = fs::canonical(path, error);
    replaceFile(error ? path : target.native(), (status.st_mode & 07777) | defaultMode(mode & 0111),
                text, wait);
  } else {
    const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0) fail(path, errno);
    if (const int error = writeAndClose(descriptor, text); error != 0) fail(path, error);
  }
}

}  // namespace

void writeStandardOutput(std::string_view text) {
  if (const int error = writeAll(STDOUT_FILENO, text); error != 0) fail("standard output", error);
}

void writeStandardError(std::string_view text) {
  if (const int error = writeAll(STDERR_FILENO, text); error != 0) fail("standard error", error);
}

void writeFile(const std::string& path, std::string_view text) { writeTo(path, text, Wait::No); }

void writeProgram(const std::string& path, std::string_view text) {
  writeTo(path, text, Wait::No, 0777);
}

void writeFileToDisk(const std::string& path, std::string_view text) {
  writeTo(path, text, Wait::ForDisk);
}

}  // namespace velc
