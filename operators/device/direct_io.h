// Immediate access to process images: `IRDBIT`, `IWRBIT`, `_READIDIRECT`,
// `_WRITEODIRECT`, `IZSET`, `IZRST`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// Serves all six names and tells them apart by the name in the invocation: in any
// letter case when it checks, in capitals only when it generates. A name in other
// letters generates as `_WRITEODIRECT` does.
class DirectIOOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // Functions that refresh the local input or output they touch; macros for plain
  // access where the controller has none; nothing where a bound is left out.
  std::string staticCode(Generator* gen = nullptr) override;
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // For a zone, a sequence of two statements when it begins among the local outputs.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
