#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace velc {

// A private folder, which the destructor deletes with its contents. While it exists it is the one
// for temporary files, so that those that a killed compiler leaves behind are deleted with it.
class TemporaryFolder {
 public:
  TemporaryFolder();  // throws Failure
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // The contents of one of its files; empty if there is none.
  std::string read(const char* name) const;

 private:
  std::filesystem::path path_;
  std::optional<std::string> before_;  // the folder for temporary files outside
};

}  // namespace velc
