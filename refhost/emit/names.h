#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "refhost/emit/library_names.h"

namespace refhost {

// The names of one C scope. A name stays as in the source if C allows it; otherwise underscores
// are appended.
class CNames {
 public:
  enum class Scope : std::uint8_t { File, Block };

  // `avoided`: for names that a header declares; null for others. It must outlive the object.
  CNames(Scope scope, const LibraryNames* avoided) : scope_(scope), avoided_(avoided) {}

  // `wanted` or a variation of it that is unique in this scope.
  std::string allocate(std::string_view wanted);

 private:
  bool isAvoided(std::string_view name) const;

  Scope scope_;
  const LibraryNames* avoided_;
  std::unordered_set<std::string> taken_;
};

}  // namespace refhost
