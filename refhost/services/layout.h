// The sizes of types in C.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "refhost/services/derived_types.h"

namespace refhost {

// In bytes. No machine needs more: those with pointers of 32 bits need less.
struct Layout {
  std::uint64_t size = 0;  // the highest number for what exceeds 64 bits
  std::uint64_t alignment = 1;
};

class Layouts {
 public:
  // Nothing for an unknown type, and for what holds an instance of a function block or itself.
  std::optional<Layout> of(const vel::SymbolDataType* type);

 private:
  std::optional<Layout> compute(const vel::SymbolDataType& type);
  std::optional<Layout> ofStructure(const StructType& structure);

  std::unordered_map<const vel::SymbolDataType*, std::optional<Layout>> known_;
};

}  // namespace refhost
