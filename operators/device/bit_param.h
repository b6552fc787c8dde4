// Bits of a unit's parameters: `GETBITOFPARAM`, `SETBITOFPARAM`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// Reads or writes a bit whose number is known only when the program runs.
class BitParamOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // Writes no result type.
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Passes the companion variable that the host keeps for the parameter:
  // `getBitOfParam(&offsetParam_SPEED,3)`.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
