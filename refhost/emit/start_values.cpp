#include "refhost/emit/start_values.h"

namespace refhost {

bool StartValues::differFromZero(const vel::SymbolDataType* type) {
  if (type == nullptr) return false;
  const auto known = known_.find(type);
  if (known != known_.end()) return known->second;
  bool result = isInstance(type) || implicitInitial(type) != 0;
  if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
    result = array->elementInitial != nullptr || differFromZero(array->element);
  }
  if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
    for (const auto& member : structure->members()) {
      result = result || differFromZero(*member);
    }
  }
  return known_[type] = result;
}

bool StartValues::differFromZero(const VarSymbol& variable) {
  if (variable.reference) return variable.initial != nullptr;
  return variable.initial != nullptr || variable.typeInitial != nullptr ||
         differFromZero(variable.dataType());
}

}  // namespace refhost
