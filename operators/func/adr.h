// `ADR`, the address of a variable.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// Of a variable, a member or an element, or of a device address; bits within a
// variable have none. The result is a UDINT.
class ADROperator : public STOperator {
 public:
  using STOperator::STOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // A place in device memory, or a reference to the variable; empty when the operand
  // is neither known.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
