// Device addresses among the operands of an invocation. A host without device memory has
// none: no text is an address then.
#pragma once

#include <cstdint>
#include <string>

#include "host/device_memory.h"

namespace vel {

class InternalInterface;

// `text` is an address, in either notation, and parsed into `out`, which is the empty address
// before.
bool parseAddress(InternalInterface* ii, const std::string& text, HeapAddress& out);

// The place of an address in the memory image of the generated program.
std::uint32_t rawAddress(InternalInterface* ii, const HeapAddress& address);

// A device name in its parts.
JapanComponent addressParts(InternalInterface* ii, const std::string& text);

}  // namespace vel
