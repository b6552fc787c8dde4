// Zones of device memory: `ZSET`, `ZRST`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// Fills all units from a first to a last address, bits as well as words.
class ZMemOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // Writes no result type.
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Empty, on purpose, for a zone of device letters that ends in neither a bit nor a
  // word.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
