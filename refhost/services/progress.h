// The state of a declaration in visitDependencies(); see semantics/dependency_order.h.
#pragma once

#include <cstdint>

namespace refhost {

enum class Progress : std::uint8_t { Waiting, Open, Done };

}  // namespace refhost
