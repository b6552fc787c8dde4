// The operands of `SIZEOF` and `ADR`, which need not have a value.
#pragma once

#include <string>

#include "host/device_memory.h"

namespace vel {

class InternalInterface;

// `text` is a device address, in either notation, and parsed into `out`, which is the
// empty address before.
bool parseDeviceAddress(InternalInterface* ii, const std::string& text, HeapAddress& out);

}  // namespace vel
