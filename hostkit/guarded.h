// Catches exceptions of code in plugins and add-ons, which should not throw any.
#pragma once

#include <string>

namespace hostkit {

// The message of the exception being handled. To be called in a catch clause.
std::string reasonOfException();

// Calls `enter` and returns its result. If it throws, calls `fail` with the reason and returns a
// value-initialized result: false, an empty string or null.
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
