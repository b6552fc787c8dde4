// Device addresses as operands of an invocation. With a host that has no device memory, no
// operand is an address.
#pragma once

#include <cstdint>
#include <string>

#include "host/device_memory.h"

namespace vel {

class InternalInterface;

// Parses `text` into `out`, which has to be the empty address. Returns false when `text` is no
// address in either notation.
bool parseAddress(InternalInterface* ii, const std::string& text, HeapAddress& out);

// The offset of an address in the memory image of the generated program.
std::uint32_t rawAddress(InternalInterface* ii, const HeapAddress& address);

// Splits a device name into letters, number and suffix.
JapanComponent addressParts(InternalInterface* ii, const std::string& text);

}  // namespace vel
