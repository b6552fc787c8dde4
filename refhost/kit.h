// The reference host stands on the host kit throughout: what the kit names is known here too.
#pragma once

namespace hostkit {}

namespace refhost {
using namespace hostkit;
}
