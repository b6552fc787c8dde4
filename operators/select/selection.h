// Selection by a condition (`SEL`) and by limits (`LIMIT`).
#pragma once

#include <string>
#include <vector>

#include "operators/select/macro_operator.h"

namespace vel {

// SEL(G, IN0, IN1) has the type of IN0.
class SelectOperator : public StaticOperator {
 public:
  using StaticOperator::StaticOperator;

  std::string staticCode(Generator* gen = nullptr) override;
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
};

// LIMIT(MN, IN, MX) has the type of IN. `check` succeeds even when it reports that a parameter
// cannot be converted.
class LimitOperator : public StaticOperator {
 public:
  using StaticOperator::StaticOperator;

  std::string staticCode(Generator* gen = nullptr) override;
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
};

}  // namespace vel
