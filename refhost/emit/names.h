#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

namespace refhost {

// The names of one C scope. A name stays as in the source if C allows it; otherwise underscores
// are appended.
class CNames {
 public:
  enum class Scope : std::uint8_t { File, Block };

  // `forCpp` avoids the keywords of C++, too, for names that a header declares.
  CNames(Scope scope, bool forCpp) : scope_(scope), forCpp_(forCpp) {}

  // `wanted` or a variation of it that is unique in this scope.
  std::string allocate(std::string_view wanted);

 private:
  Scope scope_;
  bool forCpp_;
  std::unordered_set<std::string> taken_;
};

}  // namespace refhost
