// The sizes of types in C.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "refhost/services/derived_types.h"

namespace refhost {

// In bytes. No machine needs more: those with pointers of 32 bits need less.
struct Layout {
  // The size that a type, and all variables of a program, may have: for most machines the static
  // data of a program must lie within 2 GB of its code.
  static constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 30;

  std::uint64_t size = 0;  // the highest number for what exceeds 64 bits
  std::uint64_t alignment = 1;
  std::uint32_t depth = 0;     // levels of arrays, structures and instances within each other
  bool holdsInstance = false;  // is or contains an instance of a function block
};

// The arrays, structures and function blocks of which `type` has elements, members or variables.
std::vector<const vel::SymbolDataType*> compositeParts(const vel::SymbolDataType& type);

class Layouts {
 public:
  // Nothing for an unknown type, and for one that contains itself or an unknown one. The variables
  // of function blocks that it contains must have been declared.
  std::optional<Layout> of(const vel::SymbolDataType* type);
  // Those variables of `unit` that are kept between calls, as one structure.
  std::optional<Layout> ofVariables(const UnitSymbol& unit);
  // Types that contain themselves among those whose layout has been asked for, each once.
  const std::vector<const vel::SymbolDataType*>& cyclic() const { return cyclic_; }

 private:
  struct Entry {
    const vel::SymbolDataType* type = nullptr;
    std::optional<Layout> layout;
    Progress progress = Progress::Waiting;
  };

  Entry& entryOf(const vel::SymbolDataType& type);
  std::optional<Layout> known(const vel::SymbolDataType* type);
  std::optional<Layout> compute(const vel::SymbolDataType& type);
  bool append(Layout& whole, const VarSymbol& part);

  std::unordered_map<const vel::SymbolDataType*, Entry> entries_;
  std::vector<const vel::SymbolDataType*> cyclic_;
};

}  // namespace refhost
