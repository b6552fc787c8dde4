// Conversions from STRING and WSTRING: `STRING_TO_INT`.
#pragma once

#include <string>
#include <vector>

#include "core/fc_operator.h"

namespace vel {

// Accepts a STRING as well as a WSTRING, whichever of them the name gives.
class StrToOperator : public FCOperator {
 public:
  using FCOperator::FCOperator;

  // Sets the result type before it checks the argument.
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;

  // A call of `function` with the arguments of `invocation`, recorded in the call tree.
  std::string generateNamedCall(Generator* gen, ASTNode* invocation, const std::string& function);
};

}  // namespace vel
