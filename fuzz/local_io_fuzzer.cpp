// Any text as the option "localio.addr".
#include <stdexcept>

#include "operators/device/local_io.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  vel::LocalIoBounds bounds;
  bool parsed = false;
  try {
    parsed = vel::parseLocalIoRanges(text, bounds);
  } catch (const std::out_of_range&) {
    if (text != "-") throw;
  }
  vel::LocalIoBounds read;
  if (vel::readLocalIoRanges(text, read) != parsed) __builtin_trap();
  for (const std::string_view part :
       {bounds.inStart, bounds.inEnd, bounds.outStart, bounds.outEnd}) {
    const bool within = part.empty() || (part.data() >= text.data() &&
                                         part.data() + part.size() <= text.data() + text.size());
    if (!within) __builtin_trap();
    static_cast<void>(vel::leadingNumber(part));
  }
  return 0;
}
