// Operators that are registered but not yet translated.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"

namespace vel {

// Stands between an operator's class and its base until the class has operations
// of its own: every invocation is refused without a message.
template <class Base>
class PendingOperator : public Base {
 public:
  using Base::Base;

  bool check(InternalInterface* /*ii*/, ASTNode* /*invocation*/,
             std::vector<VELMessage>& /*messages*/, std::string& /*resultType*/,
             const std::string& /*pouName*/) override {
    return false;
  }
  std::string generate(Generator* /*gen*/, ASTNode* /*invocation*/) override { return {}; }
};

}  // namespace vel
