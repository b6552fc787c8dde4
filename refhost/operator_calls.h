// How the host enters operators.
#pragma once

#include <string>
#include <vector>

#include "core/operator.h"
#include "hostkit/guarded.h"
#include "refhost/messages.h"

namespace refhost {

// What `enter` returns, which calls an operation of `op`. When that throws, a message at
// `where` says so, and the result is false or an empty text.
template <typename Enter>
auto entered(const vel::STOperator& op, vel::TextLocation where,
             std::vector<vel::VELMessage>& messages, const Enter& enter) {
  return hostkit::guarded(enter, [&](const std::string& reason) {
    report(messages, where, message::kOperatorFailed, {op.name, reason});
  });
}

}  // namespace refhost
