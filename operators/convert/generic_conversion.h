// Conversions that name the target only: `TO_INT`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// Lends its name to the conversion that suits the argument's type.
class GeneralConvertOperator : public STOperator {
 public:
  using STOperator::STOperator;

  std::string staticCode(Generator* gen = nullptr) override;
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Empty when the name is not made of "TO_" and a known type.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
