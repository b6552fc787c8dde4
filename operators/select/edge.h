// Edge detection: `MEP`, `MEF`.
#pragma once

#include <string>
#include <vector>

#include "operators/select/macro_operator.h"

namespace vel {

// True for one scan when the condition rises (MEP) or falls (MEF). The host declares a hidden
// variable in the unit for the previous value, and names it by a digest of the operator's name
// and the source text of the condition.
class MepMefOperator : public StaticOperator {
 public:
  explicit MepMefOperator(const std::string& operatorName);

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Empty when there is no hidden variable.
  std::string generate(Generator* gen, ASTNode* invocation) override;

  // The registered name in capitals. It decides between rising and falling edges.
  std::string upperName;
};

class MepOperator : public MepMefOperator {
 public:
  using MepMefOperator::MepMefOperator;

  std::string staticCode(Generator* gen = nullptr) override;
};

class MefOperator : public MepMefOperator {
 public:
  using MepMefOperator::MepMefOperator;

  std::string staticCode(Generator* gen = nullptr) override;
};

}  // namespace vel
