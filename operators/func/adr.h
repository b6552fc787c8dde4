// `ADR`, which takes the address of a variable.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// The operand is a variable, a member, an element or a device address. A bit of a variable is
// refused because it has no address. The result is a UDINT.
class ADROperator : public STOperator {
 public:
  using STOperator::STOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // The address of a byte of device memory or of a C variable; empty when the operand is
  // neither.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
