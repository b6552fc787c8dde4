// The base class of the operators that expand to a C macro of the same name.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

class StaticOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // Accepts every invocation. All registered operators override it.
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // `MAX((a), (b))`. A shift is cast to the type of its operand to undo C's integer promotion:
  // `((u8)(SHL((x), (n))))`.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
