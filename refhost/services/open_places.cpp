#include "refhost/services/open_places.h"

namespace refhost {

std::uint64_t OpenPlaces::countIn(const UnitSymbol& unit) {
  return countIn(unit.variables(), nullptr);
}

std::uint64_t OpenPlaces::countIn(const Variables& variables, const VarSymbol* end) {
  std::uint64_t count = 0;
  for (const auto& variable : variables) {
    if (variable.get() == end) break;
    if (variable->indirect || variable->role == Role::Temp) continue;
    count += variable->placedByInstance ? 1 : countIn(variable->dataType());
  }
  return count;
}

std::uint64_t OpenPlaces::countIn(const vel::SymbolDataType* type) {
  if (!isComposite(type)) return 0;
  // A type within itself is found here with none.
  const auto [place, isNew] = known_.emplace(type, 0);
  if (!isNew) return place->second;
  std::uint64_t count = 0;
  if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
    count = countIn(array->element) * static_cast<std::uint64_t>(array->count());
  } else if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
    count = countIn(structure->members(), nullptr);
  } else if (const auto* const instance = dynamic_cast<const InstanceType*>(type)) {
    count = countIn(*instance->unit);
  }
  return known_[type] = count;
}

std::uint64_t OpenPlaces::countBefore(const VarSymbol& variable,
                                      const vel::SymbolDataType* structure) {
  const auto* const members = dynamic_cast<const StructType*>(structure);
  if (members != nullptr) return countIn(members->members(), &variable);
  return variable.owner != nullptr ? countIn(variable.owner->variables(), &variable) : 0;
}

}  // namespace refhost
