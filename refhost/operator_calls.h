// Calls into operators, which may throw.
#pragma once

#include <string>

#include "core/operator.h"
#include "hostkit/guarded.h"
#include "refhost/diagnostics.h"

namespace refhost {

// Returns what `operation` returns, which calls an operation of `op`. If it throws, an error is
// reported on `call` and the result is false or an empty string.
template <typename Operation>
auto callGuarded(const vel::STOperator& op, const vel::ASTNode& call, Diagnostics& messages,
                 const Operation& operation) {
  return hostkit::guarded(operation, [&](const std::string& reason) {
    messages.report(rangeOf(call), message::kOperatorFailed, {op.name, reason});
  });
}

}  // namespace refhost
