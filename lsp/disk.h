// The texts of files that are not open in the editor.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace lsp {

// Reads a file again only when its time or size has changed.
class Disk {
 public:
  // False if the file cannot be read.
  bool read(const std::string& path, std::string& text);
  void forget() { known_.clear(); }

 private:
  struct File {
    std::filesystem::file_time_type time;
    std::uintmax_t size = 0;
    std::string text;
  };

  std::map<std::string, File> known_;
};

}  // namespace lsp
