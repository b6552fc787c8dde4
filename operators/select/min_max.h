// The operators `MIN` and `MAX`.
#pragma once

#include <string>
#include <vector>

#include "operators/select/macro_operator.h"

namespace vel {

// The result has the type to which the other operand converts: a floating-point type or the
// larger integer type. If both operands have the same type and the invocation is assigned, it has
// the type of the assignment's target.
class MinMaxOperator : public StaticOperator {
 public:
  using StaticOperator::StaticOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
};

class MinOperator : public MinMaxOperator {
 public:
  using MinMaxOperator::MinMaxOperator;

  std::string staticCode(Generator* gen = nullptr) override;
};

class MaxOperator : public MinMaxOperator {
 public:
  using MinMaxOperator::MinMaxOperator;

  std::string staticCode(Generator* gen = nullptr) override;
};

}  // namespace vel
