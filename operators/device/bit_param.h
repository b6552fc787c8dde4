// Access to single bits of a unit's parameters: `GETBITOFPARAM`, `SETBITOFPARAM`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// Reads or writes a bit whose number is computed at run time.
class BitParamOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // Does not set the result type.
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Passes the address of the variable that the host generates beside the parameter:
  // `getBitOfParam(&offsetParam_SPEED,3)`.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
