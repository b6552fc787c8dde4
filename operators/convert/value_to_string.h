// Conversions to STRING and WSTRING: `INT_TO_STRING`, `TO_STRING`.
#pragma once

#include <string>
#include <vector>

#include "core/fc_operator.h"
#include "core/operator.h"

namespace vel {

// Converts the type that its name gives (`INT_TO_STRING`). The C function writes to the buffer
// `_returnString` of the caller. The operations also accept names without a source.
class ToStrOperator : public FCOperator {
 public:
  using FCOperator::FCOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

// Converts the type of its argument (`TO_STRING`).
class ToStrUniversalOperator : public STOperator {
 public:
  using STOperator::STOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
