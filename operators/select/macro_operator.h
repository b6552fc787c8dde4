// The base of the operators that expand to a C macro of their own name.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

class StaticOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // Accepts everything: the operators that are registered have checks of their own.
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // `MAX((a), (b))`. A shift is cast to the type of what it shifts, lest C's integer
  // promotion show: `((u8)(SHL((x), (n))))`.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
