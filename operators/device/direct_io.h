// Immediate access to inputs and outputs: `IRDBIT`, `IWRBIT`, `_READIDIRECT`,
// `_WRITEODIRECT`, `IZSET`, `IZRST`.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// The class of all six operators, which it distinguishes by the name in the invocation. `check`
// ignores its letter case but `generate` does not: it generates `_WRITEODIRECT` for a name that
// is not in capitals.
class DirectIOOperator : public STOperator {
 public:
  using STOperator::STOperator;

  // Functions that refresh a local input before reading it and a local output after writing it;
  // macros without a refresh when the controller has no local I/O; empty when a bound is missing.
  std::string staticCode(Generator* gen = nullptr) override;
  bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
             std::string& resultType, const std::string& pouName) override;
  // Generates two statements for a zone that begins in the range of local outputs.
  std::string generate(Generator* gen, ASTNode* invocation) override;
};

}  // namespace vel
