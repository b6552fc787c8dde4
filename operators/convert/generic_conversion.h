// Conversions whose names give only the target: `TO_INT`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// Passes its name to the conversion class that fits the type of the argument.
class GeneralConvertOperator : public STOperator {
 public:
  using STOperator::STOperator;

  std::string staticCode(Generator* gen = nullptr) override;
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Empty unless the name consists of "TO_" and a known type.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
