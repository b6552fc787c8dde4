// The reference host is built on the host kit, so it uses the kit's names without a qualifier.
#pragma once

namespace hostkit {}

namespace refhost {
using namespace hostkit;  // NOLINT(google-build-using-namespace)
}
