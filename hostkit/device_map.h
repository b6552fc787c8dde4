// A device memory: its areas, their addresses, and their offsets in `_m`.
#pragma once

#include <string>
#include <string_view>

#include "host/device_memory.h"

namespace hostkit {

// Parses both notations, whichever of them the project uses. The areas follow each other in the
// order M, I, Q in IEC notation and M, S, B, D, R, W, X, Y in device letters.
//
// An IEC address may have numbers in front of that of its unit: module, rack and module, or bus,
// rack and module, as `%IW2.3` is word 3 of module 2. They stand for ranges of fixed sizes, so that
// every unit also has an address without them.
class DeviceMap {
 public:
  static constexpr std::uint32_t kModuleBytes = 32;
  static constexpr std::uint32_t kModulesOfRack = 16;
  static constexpr std::uint32_t kRacksOfBus = 16;

  // Sizes of the IEC areas in bytes. The device areas lie inside them: X in I, Y in Q, and all
  // others in M.
  struct Sizes {
    std::uint32_t m = 16384;
    std::uint32_t i = 1024;
    std::uint32_t q = 1024;
  };

  explicit DeviceMap(Sizes sizes) : sizes_(sizes) {}

  // Why a text that has the form of an IEC address is none.
  struct Fault {
    std::string_view number;  // of the text: must be below `limit`; empty for none
    std::uint64_t limit = 0;
    std::uint64_t byte = 0;      // where the unit would begin in its area...
    std::uint64_t areaSize = 0;  // ...of so many bytes; 0 if it is not outside
  };

  bool parse(std::string_view text, vel::HeapAddress& out) const;
  // The same; `fault` is empty, too, for a text that does not have the form.
  bool parse(std::string_view text, vel::HeapAddress& out, Fault& fault) const;
  vel::HeapRawAddr raw(const vel::HeapAddress& address) const;

  // The size in bytes of the area that the address is in.
  std::uint32_t areaSize(const vel::HeapAddress& address) const { return area(address.area).size; }

  // C text that reads the address with the runtime: `gbit(131072)`, `VEL_MEM(u16, 0)`.
  std::string text(const vel::HeapAddress& address) const;

  // Allocates bytes after the areas, for hidden state. `alignment` is a power of two.
  vel::HeapRawAddr allocateState(std::uint32_t bytes = 1, std::uint32_t alignment = 1);
  void releaseState() { stateBytes_ = 0; }
  const Sizes& sizes() const { return sizes_; }
  std::uint32_t stateBytes() const { return stateBytes_; }
  // Size of the whole memory image in bytes, including hidden state.
  std::uint32_t byteSize() const { return sizes_.m + sizes_.i + sizes_.q + stateBytes_; }

 private:
  struct Area {
    std::uint32_t start;  // bytes
    std::uint32_t size;
  };
  Area area(std::uint32_t number) const;
  bool parseIec(std::string_view text, vel::HeapAddress& out, Fault& fault) const;
  bool placeIec(std::uint32_t areaNumber, std::uint32_t unitSize, std::string_view numbers,
                vel::HeapAddress& out, Fault& fault) const;
  bool parseLetters(std::string_view text, vel::HeapAddress& out) const;
  bool place(std::uint32_t areaNumber, std::uint32_t unitSize, std::uint64_t index,
             std::uint32_t bit, vel::HeapAddress& out) const;

  Sizes sizes_;
  std::uint32_t stateBytes_ = 0;
};

// The IEC name of the type at an address: BOOL for a bit, else the bit string of its size.
const char* addressTypeName(const vel::HeapAddress& address);

}  // namespace hostkit
