// How the value of a variable is made up, for those who print it or set it.
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
  // Of an elementary value, a pointer or an enumeration: what it is stored as, with its
  // bytes in the generated program.
  vel::BasicDataType type = vel::BasicDataType::None;
  int byteSize = 0;
  std::vector<std::pair<std::int64_t, std::string>> names;  // of an enumeration's values

  // Of an array. Elements of several dimensions lie one after the other.
  std::shared_ptr<const ValueShape> element;
  std::int64_t count = 0;
  std::vector<std::pair<std::int64_t, std::int64_t>> bounds;

  // Of a structure. What has no value to show is left out.
  bool isStructure = false;
  std::vector<Member> members;

  bool hasParts() const { return element != nullptr || isStructure; }
};

// Null for a type without a value to show: an instance of a function block, and what
// consists of such. Structures in C must have got their `names`.
std::shared_ptr<const ValueShape> shapeOf(const SymbolNames& names,
                                          const vel::SymbolDataType* type);

}  // namespace refhost
