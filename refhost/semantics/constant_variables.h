// The values of CONSTANT variables, which may be used before they are declared.
#pragma once

#include <vector>

#include "refhost/semantics/part.h"

namespace refhost {

class ConstantVariables : public Part {
 public:
  using Part::Part;

  // Computes the value of the CONSTANT variable and of those that it depends on. Returns false
  // when its initial value is refused, or depends on itself, which is reported once.
  bool compute(VarSymbol& constant);

 private:
  std::vector<VarSymbol*> neededBy(const VarSymbol& constant);
  void refuseCycle(std::vector<VarSymbol*>& cycle);
  void computeNow(VarSymbol& constant, const std::vector<VarSymbol*>& needs);
};

}  // namespace refhost
