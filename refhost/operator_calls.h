// Calls into operators, which may throw.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"
#include "hostkit/guarded.h"
#include "refhost/messages.h"

namespace refhost {

// Returns what `operation` returns, which calls an operation of `op`. If it throws, an error is
// reported at `where` and the result is false or an empty string.
template <typename Operation>
auto callGuarded(const vel::STOperator& op, vel::TextLocation where,
                 std::vector<vel::VELMessage>& messages, const Operation& operation) {
  return hostkit::guarded(operation, [&](const std::string& reason) {
    report(messages, where, message::kOperatorFailed, {op.name, reason});
  });
}

}  // namespace refhost
