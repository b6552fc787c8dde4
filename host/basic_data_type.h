// The host's numbering of elementary types.
#pragma once

#include <cstdint>
#include <string>

namespace vel {

// The plugin relies on the numbers -1 to 11, 18, 19, and 21 to 24; on 13, for which MUX calls
// its 64-bit function; on 12 to 16 being the times and dates; and on 17 and 20 in generic
// conversions. Elsewhere it recognizes types by their names. A bit string has the number of the
// unsigned integer of its width: only the name of its data type tells a BYTE from a USINT.
enum class BasicDataType : std::int32_t {
  Undetermined = -1,  // the host could not type the expression
  None = 0,           // no elementary type
  SInt = 1,
  Int = 2,
  DInt = 3,
  LInt = 4,
  USInt = 5,  // and BYTE
  UInt = 6,   // and WORD
  UDInt = 7,  // and DWORD
  ULInt = 8,  // and LWORD
  Bool = 9,
  Real = 10,
  LReal = 11,
  Time = 12,   // milliseconds
  LTime = 13,  // nanoseconds
  Date = 14,
  TimeOfDay = 15,
  DateAndTime = 16,
  Pointer = 17,  // converts as a UDINT does
  String = 18,
  WString = 19,
  Derived = 20,  // a named type; converts as the type of that name
  Structure = 21,
  Enumeration = 22,
  FunctionBlock = 23,
  BitAddress = 24,  // a single bit of device memory
};

}  // namespace vel

// The type of an expression.
struct DataTypeInfo {
  vel::BasicDataType type = vel::BasicDataType::None;
  std::string name;  // the type's name as the program knows it, e.g. "BYTE"
};
