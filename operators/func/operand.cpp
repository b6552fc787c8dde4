#include "operators/func/operand.h"

#include "host/internal_interface.h"

namespace vel {

bool parseDeviceAddress(InternalInterface* ii, const std::string& text, HeapAddress& out) {
  constexpr std::uint32_t kNone = ~0U;
  ii->deviceMemory()->string2IecAddress(text, &out, false);
  return out.area != 0 && out.unitSize != kNone && out.position != kNone;
}

}  // namespace vel
