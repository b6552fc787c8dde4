// Any text as a device address in both notations.
#include "hostkit/device_map.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const hostkit::DeviceMap memory({16, 8, 8});
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  const vel::HeapAddress untouched;
  vel::HeapAddress address;
  if (memory.parse(text, address)) {
    // What is accepted lies within the image.
    const std::uint32_t raw = memory.raw(address).address;
    const std::uint32_t last =
        address.isBitMode() ? raw / 8 : raw + (address.unitSize != 0 ? address.unitSize - 1 : 0);
    if (last >= memory.byteSize()) __builtin_trap();
    if (hostkit::addressTypeName(address) == nullptr) __builtin_trap();
  } else if (address.area != untouched.area || address.position != untouched.position) {
    __builtin_trap();
  }
  return 0;
}
