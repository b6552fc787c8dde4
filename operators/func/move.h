// `MOVE`, assignment as a function.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// The result has the type of the input, whatever the type of the assignment's target.
class MoveOperator : public STOperator {
 public:
  using STOperator::STOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
