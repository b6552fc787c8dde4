// Names of the generated C.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

namespace refhost {

// One C scope. Names stay as written in the source wherever C allows it; otherwise
// underscores are appended.
class CNames {
 public:
  enum class Scope : std::uint8_t { File, Block };

  explicit CNames(Scope scope) : scope_(scope) {}

  // A name that nothing else in this scope has.
  std::string allocate(std::string_view wanted);

 private:
  Scope scope_;
  std::unordered_set<std::string> taken_;
};

}  // namespace refhost
