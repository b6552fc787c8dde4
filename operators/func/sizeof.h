// `SIZEOF`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// The size of a variable, a data type, a literal or a device address. The operand may
// be a type specification in the place of the parameter list. Parameters after the
// first are ignored.
class SizeofOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // Writes the result type first; INVALID for an operand that has no size.
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Leaves the size to the C compiler.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
