#pragma once

#include <filesystem>

namespace velc {

// A private folder, which the destructor deletes with its contents.
class TemporaryFolder {
 public:
  TemporaryFolder();  // throws Failure
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace velc
