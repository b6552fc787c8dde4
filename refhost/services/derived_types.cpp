#include "refhost/services/derived_types.h"

#include <algorithm>
#include <limits>

namespace refhost {
namespace {

// The name within that of another type. It is cut when types are nested so deeply that no reader
// needs it, lest a chain of n types have names of n * n characters.
std::string nestedName(const vel::SymbolDataType& type) {
  constexpr std::size_t kLongest = 200;
  std::string name = displayName(&type);
  return name.size() <= kLongest ? name : "...";
}

std::string arrayName(const vel::SymbolDataType& element, const std::vector<Bounds>& bounds) {
  std::string name = "ARRAY[";
  for (const Bounds& dimension : bounds) {
    if (name.back() != '[') name += ", ";
    name += textOf(dimension.low) + ".." + textOf(dimension.high);
  }
  return name + "] OF " + nestedName(element);
}

std::string openArrayName(const vel::SymbolDataType& element, int dimensions) {
  std::string name = "ARRAY[*";
  for (int i = 1; i < dimensions; ++i) name += ", *";
  return name + "] OF " + nestedName(element);
}

std::string pointerName(const vel::SymbolDataType* target, bool reference) {
  if (target == nullptr) return "NULL";
  return (reference ? "REF_TO " : "POINTER TO ") + nestedName(*target);
}

// For the description of a type without a name.
template <typename Symbols>
std::string firstNames(const Symbols& symbols) {
  constexpr std::size_t kMost = 4;
  std::string names;
  for (std::size_t i = 0; i < symbols.size() && i < kMost; ++i) {
    names += (i == 0 ? "" : ", ") + symbols[i]->name();
  }
  return symbols.size() > kMost ? names + ", ..." : names;
}

}  // namespace

bool isAnonymous(const vel::SymbolDataType& type) {
  return type.name().find('#') != std::string::npos;
}

std::string displayName(const vel::SymbolDataType* type) {
  if (type == nullptr) return "unknown";
  if (isAnonymous(*type)) {
    if (const auto* const enumeration = dynamic_cast<const EnumType*>(type)) {
      return "enumeration (" + firstNames(enumeration->values()) + ")";
    }
    if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
      return "structure (" + firstNames(structure->members()) + ")";
    }
  }
  if (const auto* const text = dynamic_cast<const StringType*>(type)) {
    return elementaryType(text->dataType())->name;
  }
  const ElementaryType* const row = elementaryType(type->dataType());
  const bool ownName = row == nullptr || row->name == nullptr || isBitStringName(type->typeName());
  return ownName ? type->typeName() : row->name;
}

BasicDataType valueType(const vel::SymbolDataType* type) {
  if (type == nullptr) return BasicDataType::None;
  if (type->dataType() != BasicDataType::Enumeration) return type->dataType();
  const auto* const enumeration = dynamic_cast<const EnumType*>(type);
  return enumeration != nullptr ? enumeration->base->dataType() : type->dataType();
}

bool isEnumeration(const vel::SymbolDataType* type) {
  return type != nullptr && type->dataType() == BasicDataType::Enumeration;
}

bool isComposite(const vel::SymbolDataType* type) {
  if (type == nullptr) return false;
  const BasicDataType number = type->dataType();
  return number == BasicDataType::Derived || number == BasicDataType::Structure ||
         number == BasicDataType::FunctionBlock;
}

bool isInstance(const vel::SymbolDataType* type) {
  return type != nullptr && type->dataType() == BasicDataType::FunctionBlock;
}

ArrayType::ArrayType(vel::SymbolDataType* elementType, std::vector<Bounds> dimensions,
                     Expr* initialOfElements)
    : SymbolDataType(arrayName(*elementType, dimensions), BasicDataType::Derived),
      element(elementType),
      bounds(std::move(dimensions)),
      elementInitial(initialOfElements) {}

std::int64_t ArrayType::count(std::size_t first) const {
  constexpr Integer kHighest = std::numeric_limits<std::int64_t>::max();
  Integer product = 1;
  for (std::size_t i = first; i < bounds.size(); ++i) {
    product = std::min(product * std::min(bounds[i].count(), kHighest), kHighest);
  }
  return static_cast<std::int64_t>(product);
}

OpenArrayType::OpenArrayType(vel::SymbolDataType* elementType, int dimensionCount)
    : SymbolDataType(openArrayName(*elementType, dimensionCount), BasicDataType::Derived),
      element(elementType),
      dimensions(dimensionCount) {}

const OpenArrayType* asOpenArray(const vel::SymbolDataType* type) {
  if (type == nullptr || type->dataType() != BasicDataType::Derived) return nullptr;
  return dynamic_cast<const OpenArrayType*>(type);
}

// The bounds of an ARRAY[*] are DINTs.
bool isPassable(const vel::SymbolDataType& from, const vel::SymbolDataType& to) {
  const OpenArrayType* const wanted = asOpenArray(&to);
  if (wanted == nullptr) return sameType(from, to);
  if (const OpenArrayType* const open = asOpenArray(&from)) {
    return open->dimensions == wanted->dimensions && sameType(*open->element, *wanted->element);
  }
  const auto* const array = dynamic_cast<const ArrayType*>(&from);
  return array != nullptr && array->bounds.size() == static_cast<std::size_t>(wanted->dimensions) &&
         sameType(*array->element, *wanted->element) &&
         std::all_of(array->bounds.begin(), array->bounds.end(), [](const Bounds& bounds) {
           return fits(bounds.low, BasicDataType::DInt) && fits(bounds.high, BasicDataType::DInt);
         });
}

StructType::StructType(const std::string& name, const ASTNode& node)
    : SymbolDataType(name, BasicDataType::Structure), declared(node) {}

bool StructType::addMember(std::unique_ptr<VarSymbol> member) {
  if (!byName_.emplace(member->name(), member.get()).second) return false;
  members_.push_back(std::move(member));
  return true;
}

VarSymbol* StructType::member(std::string_view name) const {
  const auto found = byName_.find(name);
  return found != byName_.end() ? found->second : nullptr;
}

NamedValue* EnumType::addValue(const std::string& name, Integer number) {
  auto value = std::make_unique<NamedValue>(name, this, number);
  if (!byName_.emplace(value->name(), value.get()).second) return nullptr;
  values_.push_back(std::move(value));
  return values_.back().get();
}

NamedValue* EnumType::value(std::string_view name) const {
  const auto found = byName_.find(name);
  return found != byName_.end() ? found->second : nullptr;
}

SubrangeType::SubrangeType(const std::string& name, vel::SymbolDataType* baseType, Bounds bounds)
    : SymbolDataType(name, baseType->dataType()), base(baseType), range(bounds) {}

PointerType::PointerType(vel::SymbolDataType* targetType, bool reference)
    : SymbolDataType(pointerName(targetType, reference), BasicDataType::Pointer),
      target(targetType),
      isReference(reference) {}

VarSymbol* memberOf(const vel::SymbolDataType* type, std::string_view name) {
  if (const auto* const instance = dynamic_cast<const InstanceType*>(type)) {
    return instance->unit->variable(name);
  }
  const auto* const structure = dynamic_cast<const StructType*>(type);
  return structure != nullptr ? structure->member(name) : nullptr;
}

const VarSymbol* referenceNamed(const ASTNode& node) {
  if (node.type() != vel::ASTType::Expression) return nullptr;
  const auto& expr = static_cast<const Expr&>(node);
  const bool named = expr.kind == ExprKind::Variable || expr.kind == ExprKind::Member;
  const auto* const variable = named ? asVariable(expr.symbol) : nullptr;
  return variable != nullptr && variable->reference ? variable : nullptr;
}

// The target of a pointer or reference is writable even if that is constant.
bool isWritable(const Expr& place, bool outputs) {
  const auto* const variable = asVariable(place.symbol);
  if (place.kind == ExprKind::Variable) {
    // A device address has no symbol and is writable.
    return place.symbol == nullptr || (variable != nullptr && !isReadOnly(place));
  }
  if (!isAccess(place.kind)) return false;
  const auto& base = static_cast<const Expr&>(*place.leaf(0));
  if (place.kind == ExprKind::Dereference) return true;
  if (place.kind == ExprKind::Element && valueType(base.dataType) == BasicDataType::Pointer) {
    return true;
  }
  if (place.kind != ExprKind::Member) return isWritable(base, outputs);
  if (variable == nullptr || variable->reference) return variable != nullptr;
  if (variable->role == Role::Member) return isWritable(base, outputs);
  if (variable->role == Role::Output) return outputs;
  // Only tests can name a local variable of an instance.
  return variable->role == Role::Input || (variable->role == Role::Local && !variable->constant);
}

bool isReadOnly(const Expr& place) {
  const auto* const variable = asVariable(place.symbol);
  if (place.kind == ExprKind::Variable) {
    if (variable == nullptr) return false;
    const bool passed = variable->role == Role::Input && variable->indirect;
    // That an output is constant is reported at its declaration.
    const bool constant = variable->constant && variable->role != Role::Output;
    return constant || (passed && !variable->reference);
  }
  if (!isAccess(place.kind) || place.kind == ExprKind::Dereference) return false;
  const auto& base = static_cast<const Expr&>(*place.leaf(0));
  if (place.kind == ExprKind::Member) {
    return variable != nullptr && variable->role == Role::Member && !variable->reference &&
           isReadOnly(base);
  }
  return valueType(base.dataType) != BasicDataType::Pointer && isReadOnly(base);
}

bool isBindable(const Expr& reference) {
  return reference.kind != ExprKind::Member || asVariable(reference.symbol)->role != Role::Member ||
         isWritable(static_cast<const Expr&>(*reference.leaf(0)));
}

Integer implicitInitial(const vel::SymbolDataType* type) {
  if (const auto* const enumeration = dynamic_cast<const EnumType*>(type)) {
    return enumeration->values().empty() ? 0 : enumeration->values().front()->value;
  }
  const auto* const subrange = dynamic_cast<const SubrangeType*>(type);
  return subrange != nullptr ? subrange->range.low : 0;
}

}  // namespace refhost
