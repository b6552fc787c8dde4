// The structure of a variable's value, for printing and setting it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/symbol.h"

namespace refhost {

class SymbolNames;

struct ValueShape {
  struct Member {
    std::string name;
    std::string reference;  // of the member in C, within its structure
    std::shared_ptr<const ValueShape> shape;
  };

  std::string typeName;
  // For an elementary value, a pointer or an enumeration: the type and the size in bytes with which
  // the generated program stores it.
  vel::BasicDataType type = vel::BasicDataType::None;
  int byteSize = 0;
  std::vector<std::pair<std::int64_t, std::string>> names;  // of an enumeration's values

  // For an array, whose elements lie in row-major order.
  std::shared_ptr<const ValueShape> element;
  std::int64_t count = 0;
  std::vector<std::pair<std::int64_t, std::int64_t>> bounds;

  // For a structure, without members that have no value.
  bool isStructure = false;
  std::vector<Member> members;

  bool hasParts() const { return element != nullptr || isStructure; }
};

// Null for a type without a value: a function block instance, and arrays and structures of those.
// The C `names` must have been chosen.
std::shared_ptr<const ValueShape> shapeOf(const SymbolNames& names,
                                          const vel::SymbolDataType* type);

}  // namespace refhost
