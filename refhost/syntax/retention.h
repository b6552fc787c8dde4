#pragma once

#include <cstdint>

namespace refhost {

// Whether a variable keeps its value without power. `Unsaid` leaves it to that in which it lies:
// the instance, for a variable of a PROGRAM or a function block.
enum class Retention : std::uint8_t { Unsaid, Retain, NonRetain };

}  // namespace refhost
