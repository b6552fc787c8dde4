#pragma once

#include <filesystem>

namespace velc {

// A private folder that goes, with all in it, when this object does.
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
