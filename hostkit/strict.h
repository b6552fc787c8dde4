// For tests of the plugin: with HOSTKIT_STRICT, a request that the contract does not allow
// aborts the program.
#pragma once

#include <cstdlib>

namespace hostkit {

static inline void require([[maybe_unused]] bool isAllowed) {
#ifdef HOSTKIT_STRICT
  if (!isAllowed) std::abort();
#endif
}

}  // namespace hostkit
