#include "lsp/disk.h"

#include "refhost/syntax/source.h"

namespace lsp {

bool Disk::read(const std::string& path, std::string& text) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::file_time_type time = fs::last_write_time(path, error);
  if (error || !fs::is_regular_file(path, error)) return false;
  const std::uintmax_t size = fs::file_size(path, error);
  File& file = known_[path];
  if (file.time != time || file.size != size) {
    refhost::SourceManager source;
    std::string reason;
    if (source.load(path, reason) < 0) return false;
    file = {time, size, std::string(source.text(0))};
  }
  text = file.text;
  return true;
}

}  // namespace lsp
