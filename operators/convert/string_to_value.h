// Conversions from STRING and WSTRING: `STRING_TO_INT`.
#pragma once

#include <string>
#include <vector>

#include "core/fc_operator.h"

namespace vel {

// Takes either kind of string, whichever the name says.
class StrToOperator : public FCOperator {
 public:
  using FCOperator::FCOperator;

  // Writes the result type before it looks at the argument.
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;

  // A call of `function` with the arguments of `invocation`, entered in the call tree.
  std::string generateNamedCall(Generator* gen, ASTNode* invocation, const std::string& function);
};

}  // namespace vel
