// Functions and function blocks with side effects, for which the order of evaluation matters.
#pragma once

#include <unordered_set>

#include "refhost/services/symbol_table.h"

namespace refhost {

class Effects {
 public:
  // The program must have been analysed.
  explicit Effects(const SymbolTable& symbols);

  // False when no expression of the program depends on the order of evaluation.
  bool any() const { return any_; }
  // True when a call in `whole` has side effects or stores its ENO.
  bool in(const vel::ASTNode& whole) const;

 private:
  std::unordered_set<const vel::Symbol*> units_;
  bool any_ = false;
};

}  // namespace refhost
