// The conversion `TRUNC`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// Converts a number to DINT by discarding its fraction.
class TruncOperator : public STOperator {
 public:
  using STOperator::STOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
