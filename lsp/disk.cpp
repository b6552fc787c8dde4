#include "lsp/disk.h"

#include <sys/stat.h>

#include "refhost/syntax/source.h"

namespace lsp {

bool Disk::read(const std::string& path, std::string& text) {
  // One call for what <filesystem> asks in three: completion reads whole folders.
  struct stat entry = {};
  if (stat(path.c_str(), &entry) != 0 || !S_ISREG(entry.st_mode)) return false;
  const timespec time = entry.st_mtim;
  File& file = known_[path];
  const bool same = file.time.tv_sec == time.tv_sec && file.time.tv_nsec == time.tv_nsec;
  if (!same || file.size != entry.st_size) {
    refhost::SourceManager source;
    std::string reason;
    if (source.load(path, reason) < 0) return false;
    file = {time, entry.st_size, std::string(source.text(0))};
  }
  text = file.text;
  return true;
}

}  // namespace lsp
