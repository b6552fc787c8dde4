// Functions that reach beyond their inputs: the order in which they are called shows.
#pragma once

#include <unordered_set>

#include "refhost/services/symbol_table.h"

namespace refhost {

class Effects {
 public:
  // Finds them among the units of an analysed program.
  explicit Effects(const SymbolTable& symbols);

  // False when the order of evaluation shows nowhere in the program.
  bool any() const { return any_; }
  // True when a call in `whole` has effects or stores its ENO.
  bool in(const vel::ASTNode& whole) const;

 private:
  std::unordered_set<const vel::Symbol*> functions_;
  bool any_ = false;
};

}  // namespace refhost
