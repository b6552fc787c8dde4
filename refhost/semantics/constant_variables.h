// The values of CONSTANT variables, which may be asked for before their declarations' turn.
#pragma once

#include <vector>

#include "refhost/semantics/part.h"

namespace refhost {

class ConstantVariables : public Part {
 public:
  using Part::Part;

  // Computes the value of the CONSTANT variable and of those that it depends on. Returns false
  // when it depends on itself, or on one that does; an error names the circle once.
  bool compute(VarSymbol& constant);

 private:
  std::vector<VarSymbol*> neededBy(const VarSymbol& constant);
  void refuseCircle(std::vector<VarSymbol*>& circle);
  void computeNow(VarSymbol& constant, const std::vector<VarSymbol*>& needs);
};

}  // namespace refhost
