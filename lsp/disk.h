// The texts of files that are not open in the editor.
#pragma once

#include <sys/types.h>

#include <ctime>
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
    timespec time = {};
    off_t size = -1;
    std::string text;
  };

  std::map<std::string, File> known_;
};

}  // namespace lsp
