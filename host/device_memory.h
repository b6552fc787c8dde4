// Device memory: the addresses of process images, relays and registers.
#pragma once

#include <cstdint>
#include <string>

#include "host/basic_data_type.h"
#include "host/export.h"

namespace vel {

// A parsed device address.
struct VEL_HOST_API HeapAddress {
  HeapAddress();  // the empty address: the first and last field 0, all bits of the others set
  // True for the address of a single bit.
  bool isBitMode() const;

  std::uint32_t area;      // number that the host gives to the memory area; 0 for none
  std::uint32_t unitSize;  // bytes of the unit addressed; 1 for bits
  std::uint32_t position;  // orders the addresses of one area
  std::uint32_t bitIndex;  // bit within its unit; all bits set when not a bit
  std::uint32_t extra;     // for the host; the plugin does not use it
};

// The offset of an address in the memory image `_m` of the generated program, in the units
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

  // Parses an address in either notation into `*out`, which holds the empty address on entry.
  // Returns false for any other string and should then leave `*out` as it is, since the plugin
  // may read it all the same. `strict` is reserved; the plugin passes false.
  bool string2IecAddress(const std::string& text, HeapAddress* out, bool strict);
  // The type of the unit at `address`; BitAddress for a bit.
  BasicDataType iecAddressType(const HeapAddress& address);
  // The plugin passes the empty address too, for an operand that is no valid address.
  HeapRawAddr HeapAddress2HeapRawAddr(const HeapAddress& address);
  // Splits a name in device letters. All parts are empty for any other string.
  JapanComponent parseComponent(const std::string& text);
};

}  // namespace vel
