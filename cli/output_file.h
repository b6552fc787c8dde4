// Writes results completely or not at all.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

#include "cli/termination_guard.h"

namespace velc {

// These throw Failure when they cannot write the whole text.
void writeStandardError(std::string_view text);
void writeStandardOutput(std::string_view text);
// Throws Terminated, too, if a signal arrives while nobody reads what it writes.
void writeStandardOutput(std::string_view text, const TerminationGuard& guard);

// A file that is written piece by piece and takes the place of the one at `path` at the end.
// Anything other than a regular file (a device, a pipe) is written to directly. The operations
// throw Failure, and Terminated if a signal arrives while nobody reads from a pipe. Unless
// replace() has been called, the destructor leaves the file at `path` as it is, and no temporary
// file.
class GrowingFile {
 public:
  static constexpr mode_t kReadable = 0666;

  // `mode` is that of a new file, as far as the mask of the process allows; an old one keeps its
  // own, and can be executed if `mode` says so. It also keeps its owner and group if the process
  // may set them.
  GrowingFile(const std::string& path, const TerminationGuard& guard, mode_t mode = kReadable);
  ~GrowingFile();
  GrowingFile(const GrowingFile&) = delete;
  GrowingFile& operator=(const GrowingFile&) = delete;

  void write(std::string_view text);
  enum class Wait : bool { No, ForDisk };
  void replace(Wait wait = Wait::No);

 private:
  void fail(int error);

  std::string path_;  // as given
  const TerminationGuard& guard_;
  std::string target_;     // the regular file; empty for others
  std::string temporary_;  // empty when there is none
  int descriptor_ = -1;
};

// Replaces the contents of the file `path` by `text` atomically. When it throws Failure, or a
// signal terminates velc, the file is unchanged and no temporary file remains. Writes directly to
// anything other than a regular file (a device, a pipe).
void writeFile(const std::string& path, std::string_view text);
// The same for a program: a new file can be executed.
void writeProgram(const std::string& path, std::string_view text);
// Like writeFile(), and waits until the disk has the new file, so that a loss of power leaves it
// whole, too.
void writeFileToDisk(const std::string& path, std::string_view text);

}  // namespace velc
