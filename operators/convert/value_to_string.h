// Conversions to STRING and WSTRING: `INT_TO_STRING`, `TO_STRING`.
#pragma once

#include <string>
#include <vector>

#include "core/fc_operator.h"
#include "core/operator.h"

namespace vel {

// Names the source. The text is written to the caller's buffer `_returnString`. Its
// operations also serve names that state the target only.
class ToStrOperator : public FCOperator {
 public:
  using FCOperator::FCOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

// Takes the source from the argument.
class ToStrUniversalOperator : public STOperator {
 public:
  using STOperator::STOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
