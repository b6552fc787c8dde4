// Conversions that name source and target: `INT_TO_REAL`, and `TO_BOOL`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// A cast to the C type of the target. Its operations also serve names that state the
// target only (`TO_INT`), for which the source is the argument's type.
class ConvertOperator : public STOperator {
 public:
  using STOperator::STOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Empty when the name is not made of known types.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

// From REAL or LREAL to anything that C keeps in an integer: rounds half away from 0.
class RealToIntegerOperator : public ConvertOperator {
 public:
  using ConvertOperator::ConvertOperator;

  std::string staticCode(Generator* gen = nullptr) override;
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

// To BOOL: a comparison with 0, whatever the source.
class ToBoolOperator : public ConvertOperator {
 public:
  using ConvertOperator::ConvertOperator;

  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
