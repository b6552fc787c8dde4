// Device memory: the addresses of process images, relays and registers.
#pragma once

#include <cstdint>
#include <string>

#include "host/basic_data_type.h"
#include "host/export.h"

namespace vel {

// A parsed device address.
struct VEL_HOST_API HeapAddress {
  HeapAddress();  // the empty address: 0, all ones three times, 0
  // True for the address of a single bit.
  bool isBitMode() const;

  std::uint32_t area;      // 0 none; otherwise the host's number of the area
  std::uint32_t unitSize;  // bytes of the unit addressed; 1 for bits
  std::uint32_t position;  // orders the addresses of one area
  std::uint32_t bitIndex;  // bit within its unit; all ones when not a bit
  std::uint32_t extra;     // the host's own
};

// The place of an address in the memory image `_m` of the generated program, in the units
// of the option "localio.addr".
struct HeapRawAddr {
  std::uint32_t address = 0;  // bit number of a bit, byte number of a larger unit
};

// A device name split into its parts: `D10.3` is "D", "10", ".3".
struct VEL_HOST_API JapanComponent {
  ~JapanComponent();

  std::string device;
  std::string number;
  std::string suffix;
};

class VEL_HOST_API DeviceMemory {
 public:
  virtual ~DeviceMemory();

  // Parses an address in either notation into `*out`, which is the empty address before.
  // False for any other text. The plugin may look at `*out` then too, so it should be left
  // alone. `strict` is reserved; the plugin passes false.
  bool string2IecAddress(const std::string& text, HeapAddress* out, bool strict);
  // The type of the unit at `address`; BitAddress for a bit.
  BasicDataType iecAddressType(const HeapAddress& address);
  // Also asked of the empty address, when generated code holds one that does not parse.
  HeapRawAddr HeapAddress2HeapRawAddr(const HeapAddress& address);
  // Splits a device-letter name; all texts are empty where `text` is none.
  JapanComponent parseComponent(const std::string& text);
};

}  // namespace vel
