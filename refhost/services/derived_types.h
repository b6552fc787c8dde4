// Data types that programs declare, named or anonymous. The symbol table owns them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "refhost/services/typed_constant.h"
#include "refhost/services/unit_symbol.h"

namespace refhost {

// The elementary type in which values are stored and computed: the base type of an enumeration,
// the type itself for all others; None for null.
BasicDataType valueType(const vel::SymbolDataType* type);

bool isEnumeration(const vel::SymbolDataType* type);
// An array, a structure or a function block instance.
bool isComposite(const vel::SymbolDataType* type);
bool isInstance(const vel::SymbolDataType* type);

struct Bounds {
  Integer low;
  Integer high;

  Integer count() const { return high - low + 1; }
  bool operator==(const Bounds& other) const { return low == other.low && high == other.high; }
  bool operator<(const Bounds& other) const {
    return low != other.low ? low < other.low : high < other.high;
  }
};

class ArrayType final : public vel::SymbolDataType {
 public:
  ArrayType(vel::SymbolDataType* elementType, std::vector<Bounds> dimensions,
            Expr* initialOfElements);

  // The number of elements, all dimensions from `first` on together; the highest LINT for all
  // higher ones.
  std::int64_t count(std::size_t first = 0) const;

  const ASTNode* declared = nullptr;  // the first specification of such an array
  vel::SymbolDataType* const element;
  const std::vector<Bounds> bounds;  // one for each dimension
  Expr* const elementInitial;        // declared with the element type; null for none
};

// ARRAY[*], a parameter that stands for arrays of any bounds. In C it is a structure that holds the
// address of the first element and the bounds.
class OpenArrayType final : public vel::SymbolDataType {
 public:
  OpenArrayType(vel::SymbolDataType* elementType, int dimensionCount);

  vel::SymbolDataType* const element;
  const int dimensions;
};

// Null for every other type.
const OpenArrayType* asOpenArray(const vel::SymbolDataType* type);
// True if a variable of type `from` can be passed to an in-out parameter, or an ARRAY[*], of type
// `to`.
bool isPassable(const vel::SymbolDataType& from, const vel::SymbolDataType& to);

class StructType final : public vel::SymbolDataType {
 public:
  // `node` is its name, or its specification if it has none.
  StructType(const std::string& name, const ASTNode& node);

  // False when the name is taken.
  bool addMember(std::unique_ptr<VarSymbol> member);
  VarSymbol* member(std::string_view name) const;
  // In order of declaration.
  const std::vector<std::unique_ptr<VarSymbol>>& members() const { return members_; }

  const ASTNode& declared;

 private:
  std::vector<std::unique_ptr<VarSymbol>> members_;
  FoldedMap<VarSymbol*> byName_;
};

// A named integer: a value of an enumeration, or NULL.
class NamedValue final : public vel::SymbolTyped {
 public:
  NamedValue(const std::string& name, vel::SymbolDataType* type, Integer number)
      : SymbolTyped(name, type), value(number) {}

  const Integer value;
  const ASTNode* declared = nullptr;  // its name in the declaration; null for NULL
};

class EnumType final : public vel::SymbolDataType {
 public:
  explicit EnumType(const std::string& name) : SymbolDataType(name, BasicDataType::Enumeration) {}

  // Null when the name is taken.
  NamedValue* addValue(const std::string& name, Integer number);
  NamedValue* value(std::string_view name) const;
  const std::vector<std::unique_ptr<NamedValue>>& values() const { return values_; }

  vel::SymbolDataType* base = nullptr;  // an integer type

 private:
  std::vector<std::unique_ptr<NamedValue>> values_;
  FoldedMap<NamedValue*> byName_;
};

// To the plugin a subrange is its base type, so dataType() and typeName() are those of the base.
class SubrangeType final : public vel::SymbolDataType {
 public:
  SubrangeType(const std::string& name, vel::SymbolDataType* baseType, Bounds bounds);

  std::string typeName() const override { return base->typeName(); }

  vel::SymbolDataType* const base;
  const Bounds range;
};

class PointerType final : public vel::SymbolDataType {
 public:
  // `targetType` is null for NULL; `reference` makes it a REF_TO.
  PointerType(vel::SymbolDataType* targetType, bool reference);

  vel::SymbolDataType* const target;
  const bool isReference;
};

// The member of a structure or the variable of an instance; null when there is none.
VarSymbol* memberOf(const vel::SymbolDataType* type, std::string_view name);

// True if the program may assign to the expression; with `outputs`, as tests have it, also to the
// outputs of instances.
bool isWritable(const Expr& place, bool outputs = false);
// True of a constant, of an ARRAY[*] that is an input, and of parts of them.
bool isReadOnly(const Expr& place);
// True if the program may bind the REFERENCE TO: if it is no member of a constant.
bool isBindable(const Expr& reference);

// The value of a variable that is not initialised: the first value of an enumeration, the lowest
// of a subrange, 0 for all others.
Integer implicitInitial(const vel::SymbolDataType* type);

}  // namespace refhost
