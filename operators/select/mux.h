// The multiplexer `MUX`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// MUX(K, IN0, IN1, ...) is input number K. The result has the type of the input whose
// type has the greatest number; the check records it on the tree for the generation.
class MUXOperator : public STOperator {
 public:
  using STOperator::STOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // A call of the runtime function for the result's type, entered in the call tree.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
