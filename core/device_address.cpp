#include "core/device_address.h"

#include "host/internal_interface.h"

namespace vel {

bool parseAddress(InternalInterface* ii, const std::string& text, HeapAddress& out) {
  DeviceMemory* memory = ii->deviceMemory();
  return memory != nullptr && memory->string2IecAddress(text, &out, false);
}

std::uint32_t rawAddress(InternalInterface* ii, const HeapAddress& address) {
  DeviceMemory* memory = ii->deviceMemory();
  return memory != nullptr ? memory->HeapAddress2HeapRawAddr(address).address : 0;
}

JapanComponent addressParts(InternalInterface* ii, const std::string& text) {
  DeviceMemory* memory = ii->deviceMemory();
  return memory != nullptr ? memory->parseComponent(text) : JapanComponent();
}

}  // namespace vel
