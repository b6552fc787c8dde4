// The base class of every operator.
#pragma once

#include <string>
#include <vector>

#include "host/message.h"

namespace vel {

class ASTNode;
class Generator;
class InternalInterface;

// An operator has no state besides its name. The order of the virtual operations is part of the
// contract with the host. All members are defined inline, so that a host or an add-on can derive
// from this class without linking the plugin.
class STOperator {
 public:
  explicit STOperator(const std::string& operatorName) : name(operatorName) {}
  virtual ~STOperator() = default;
  STOperator(const STOperator&) = delete;
  STOperator& operator=(const STOperator&) = delete;

  // The C macros and inline functions that a generated program has to contain once when it
  // uses the operator; empty when there are none. A null `gen` means that no generator
  // option is set.
  virtual std::string staticCode([[maybe_unused]] Generator* gen = nullptr) { return {}; }

  // Checks `invocation`, appends errors and warnings to `messages`, and returns false when it is
  // faulty. An operator with a result sets `resultType` to the IEC name of its type; after a
  // failure `resultType` means nothing. `pouName` is the name of the enclosing unit; most
  // operators use it only where the tree gives none.
  virtual bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
                     std::string& resultType, const std::string& pouName) = 0;

  // The C code that replaces an invocation which `check` has accepted; empty when the operator
  // cannot generate any.
  virtual std::string generate(Generator* gen, ASTNode* invocation) = 0;

  // As registered.
  std::string name;
};

}  // namespace vel
