// Setting and resetting zones of device memory: `ZSET`, `ZRST`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// Fills all bits or words from a first to a last address.
class ZMemOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // Does not set the result type.
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Empty for a zone in device letters that ends in neither a bit nor a word of two bytes, since
  // devices have no other units.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
