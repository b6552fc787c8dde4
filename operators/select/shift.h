// Shifts: `SHL`, `SHR`.
#pragma once

#include <string>
#include <vector>

#include "operators/select/macro_operator.h"

namespace vel {

// SHL(IN, N) has the type of IN; a negative N gives 0.
class ShiftOperator : public StaticOperator {
 public:
  using StaticOperator::StaticOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
};

class SHLOperator : public ShiftOperator {
 public:
  using ShiftOperator::ShiftOperator;

  std::string staticCode(Generator* gen = nullptr) override;
};

class SHROperator : public ShiftOperator {
 public:
  using ShiftOperator::ShiftOperator;

  std::string staticCode(Generator* gen = nullptr) override;
};

}  // namespace vel
