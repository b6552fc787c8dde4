// The base class of the function-call style operators.
#pragma once

#include <string>

#include "core/operator.h"

namespace vel {

// An operator that generates a call of the C function of its name. The registry adds no program
// unit for such an operator, because the host itself declares the functions.
class FCOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // The call, with the name in capitals: `SQRT((x))`.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
