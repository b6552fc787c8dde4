// Calls of what others wrote, which ought not to throw and may.
#pragma once

#include <string>

namespace hostkit {

// The reason that the exception being handled gives. To be called in a catch clause.
std::string reasonOfException();

// What `enter` returns. When it throws, `fail` is told the reason, and the result is the
// empty one of its type: false, no text, null.
template <typename Enter, typename Fail>
auto guarded(const Enter& enter, const Fail& fail) -> decltype(enter()) {
  try {
    return enter();
  } catch (...) {
    fail(reasonOfException());
    return {};
  }
}

}  // namespace hostkit
