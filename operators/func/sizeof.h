// The operator `SIZEOF`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// The size of a variable, a data type, a literal or a device address in bytes. Instead of a
// parameter list the invocation may have a type specification. Parameters after the first are
// ignored.
class SizeofOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // Sets the result type before it checks the operand; INVALID for an operand without a size.
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Generates C's `sizeof`, because only the C compiler knows the size.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
