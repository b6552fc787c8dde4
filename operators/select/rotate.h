// Rotations: `ROL`, `ROR`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// ROL(IN, N) has the type of IN; a negative N rotates the other way. The last two arguments of
// the C macro are the C types of IN and of the unsigned integer of that width.
class RotateOperator : public STOperator {
 public:
  using STOperator::STOperator;

  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Empty unless the type recorded for IN is one of the eight integer types.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

class ROLOperator : public RotateOperator {
 public:
  using RotateOperator::RotateOperator;

  std::string staticCode(Generator* gen = nullptr) override;
};

class ROROperator : public RotateOperator {
 public:
  using RotateOperator::RotateOperator;

  std::string staticCode(Generator* gen = nullptr) override;
};

}  // namespace vel
