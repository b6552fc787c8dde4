// The structure of a variable's value, for printing and setting it.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/symbol.h"
#include "refhost/syntax/retention.h"

namespace refhost {

class Layouts;
class SymbolNames;
class UnitSymbol;

struct ValueShape {
  struct Member {
    std::string name;
    std::string reference;  // of the member in C, within its structure
    std::shared_ptr<const ValueShape> shape;
    std::uint64_t offset = 0;  // in bytes, as far as the structure may lie in device memory
  };

  std::string typeName;
  // For an elementary value, a pointer or an enumeration: the type and the size in bytes with which
  // the generated program stores it.
  vel::BasicDataType type = vel::BasicDataType::None;
  int byteSize = 0;
  std::vector<std::pair<std::int64_t, std::string>> names;  // of an enumeration's values

  // Of an integer: the sign and magnitude of the lowest and the highest number.
  struct Number {
    bool negative = false;
    std::uint64_t magnitude = 0;
  };
  std::optional<std::pair<Number, Number>> range;

  std::string cType;  // of an array or a structure

  // For an array, whose elements lie in row-major order.
  std::shared_ptr<const ValueShape> element;
  std::int64_t count = 0;
  std::uint64_t stride = 0;  // the size of an element in bytes
  std::vector<std::pair<std::int64_t, std::int64_t>> bounds;

  // For a structure, without members that have no value.
  bool isStructure = false;
  std::vector<Member> members;

  bool hasParts() const { return element != nullptr || isStructure; }
  // False for a number outside of the range.
  bool allows(const Number& number) const;
};

// The shapes of types. Each type has one, however often it is asked for or contained in others, so
// that their number does not grow with that of the values.
class ValueShapes {
 public:
  using Shape = std::shared_ptr<const ValueShape>;

  // The C `names` must have been chosen before anything is asked for.
  ValueShapes(const SymbolNames& names, Layouts& layouts) : names_(names), layouts_(layouts) {}

  // Null for a type without a value: a function block instance, and arrays and structures of those.
  Shape of(const vel::SymbolDataType* type) { return find(type, Parts::Values); }
  // The same with function block instances, which have the shapes of structures: of all their
  // variables but constants, in-out parameters and those at addresses; of the blocks of the
  // standard, inputs and outputs.
  Shape withInstances(const vel::SymbolDataType* type) { return find(type, Parts::Instances); }
  // What a variable declared with `retention` keeps without power; null for nothing. Everything but
  // pointers if that is Retain; of function block instances otherwise the members that are declared
  // so, unless it is NonRetain. A function block instance has the shape of a structure.
  Shape retained(const vel::SymbolDataType* type, Retention retention);
  void clear() { known_.clear(); }

 private:
  enum class Parts : std::uint8_t { Values, Instances, Retained, DeclaredRetained };

  Shape find(const vel::SymbolDataType* type, Parts parts);
  Shape make(const vel::SymbolDataType& type, Parts parts);
  Shape ofInstance(const UnitSymbol& block, Parts parts);

  const SymbolNames& names_;
  Layouts& layouts_;
  std::map<std::pair<const vel::SymbolDataType*, Parts>, Shape> known_;
};

}  // namespace refhost
