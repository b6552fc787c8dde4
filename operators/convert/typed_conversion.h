// Conversions whose names give source and target, such as `INT_TO_REAL`, and `TO_BOOL`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// Casts to the C type of the target. Its operations also accept names that give only the
// target (`TO_INT`); the source is then the type of the argument.
class ConvertOperator : public STOperator {
 public:
  using STOperator::STOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Empty unless both types are known.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

// From REAL or LREAL to a type that is an integer in C: rounds to nearest, ties away from 0.
class RealToIntegerOperator : public ConvertOperator {
 public:
  using ConvertOperator::ConvertOperator;

  std::string staticCode(Generator* gen = nullptr) override;
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

// To BOOL: compares with 0, whatever the source type.
class ToBoolOperator : public ConvertOperator {
 public:
  using ConvertOperator::ConvertOperator;

  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
