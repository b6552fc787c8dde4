// The base of the function-call style operators.
#pragma once

#include <string>

#include "core/operator.h"

namespace vel {

// An operator whose C text is a call of the C function of its name. The host itself
// declares these functions, so the registry adds no program unit for them.
class FCOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // The name in capitals and the arguments: `SQRT((x))`.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
