// Conversions from and to binary-coded decimal: `BCD_TO_INT`, `INT_TO_BCD`.
#pragma once

#include <string>
#include <vector>

#include "core/fc_operator.h"

namespace vel {

// Both classes set the result type before they check the argument.
class BCDToOperator : public FCOperator {
 public:
  using FCOperator::FCOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
};

class ToBCDOperator : public FCOperator {
 public:
  using FCOperator::FCOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
};

}  // namespace vel
