// Tells which variables have an initial value other than zero.
#pragma once

#include <unordered_map>

#include "refhost/services/derived_types.h"

namespace refhost {

class StartValues {
 public:
  // False for null.
  bool differFromZero(const vel::SymbolDataType* type);
  bool differFromZero(const VarSymbol& variable);

 private:
  std::unordered_map<const vel::SymbolDataType*, bool> known_;
};

}  // namespace refhost
