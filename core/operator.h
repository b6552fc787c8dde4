// The base of every operator.
#pragma once

#include <string>
#include <vector>

#include "host/message.h"

namespace vel {

class ASTNode;
class Generator;
class InternalInterface;

// An operator is its class and its name; it keeps no state between calls. The
// order of the virtual operations is part of the contract with the host. Nothing here
// needs the plugin to be linked: a host may call operators and add its own.
class STOperator {
 public:
  explicit STOperator(const std::string& operatorName) : name(operatorName) {}
  virtual ~STOperator() = default;
  STOperator(const STOperator&) = delete;
  STOperator& operator=(const STOperator&) = delete;

  // C text (macros, inline functions) that a generated program needs once when it
  // uses the operator; empty when it needs none. `gen` may be null, which means
  // that no generator option is set.
  virtual std::string staticCode([[maybe_unused]] Generator* gen = nullptr) { return {}; }

  // May `invocation` stand as it is? Appends errors and warnings to `messages` and
  // writes the IEC name of the result type to `resultType`, on success at the latest, where
  // the operator has one that it knows. `pouName` is the name of the enclosing unit for those
  // that find none in the tree and do not insist on it.
  virtual bool check(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
                     std::string& resultType, const std::string& pouName) = 0;

  // The C expression that replaces an invocation which `check` has accepted; empty
  // when there is none.
  virtual std::string generate(Generator* gen, ASTNode* invocation) = 0;

  // As registered.
  std::string name;
};

}  // namespace vel
