// The multiplexer `MUX`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// MUX(K, IN0, IN1, ...) selects input number K. The result has the type with the greatest
// BasicDataType number among the inputs; `check` records it in the tree for `generate`.
class MUXOperator : public STOperator {
 public:
  using STOperator::STOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // A call of the runtime function for the result's type, recorded in the call tree.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
