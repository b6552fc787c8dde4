#include "cli/temporary_folder.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include "cli/failure.h"

namespace velc {

namespace fs = std::filesystem;

namespace {

constexpr const char* kVariable = "TMPDIR";

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::error_code error;
  const fs::path parent = fs::temp_directory_path(error);
  if (error) throw Failure(fmt::format("no folder for temporary files: {}", error.message()));
  std::string name = parent / "velc-XXXXXX";
  if (mkdtemp(name.data()) == nullptr) {
    throw Failure(
        fmt::format("cannot make a folder in {}: {}", parent.native(), std::strerror(errno)));
  }
  // Absolute, because compilers do not take a path that begins with "-" or "@" for a file.
  path_ = fs::absolute(name);
  if (const char* const before = std::getenv(kVariable)) before_ = before;
  setenv(kVariable, path_.c_str(), 1);
}

std::string TemporaryFolder::read(const char* name) const {
  std::ifstream file(path_ / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TemporaryFolder::~TemporaryFolder() {
  if (before_) {
    setenv(kVariable, before_->c_str(), 1);
  } else {
    unsetenv(kVariable);
  }
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace velc
