// Where a value lies in C.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/device_memory.h"
#include "refhost/emit/symbol_names.h"

namespace refhost {

// Can be read, written and pointed to, each in its own C.
struct Place {
  enum class Kind : std::uint8_t {
    Object,     // `text` is an lvalue
    Pointed,    // `text` is a pointer to it
    Bit,        // bit `number` of the object `text`
    MemoryBit,  // bit `number` of device memory
    Memory,     // a unit of the type `text` at byte `number` of device memory
  };
  Kind kind = Kind::Object;
  std::string text;
  std::uint32_t number = 0;

  // The place of a device address, of a unit of the type `cType`.
  static Place ofAddress(const vel::HeapAddress& address, vel::HeapRawAddr raw,
                         std::string_view cType);
  // What `name` is a member of this place.
  Place member(std::string_view name) const;

  // Its value, as an expression.
  std::string load() const;
  // An expression that gives it `value`, which has its C type.
  std::string store(std::string_view value) const;
  // A pointer to it, of the type `pointer`. Bits have none.
  std::string address(std::string_view pointer) const;
  bool isBit() const { return kind == Kind::Bit || kind == Kind::MemoryBit; }
};

// The C statement, without its semicolon, that gives `place`, of the type `to`, the value
// `value` of type `from`. `capacity` counts the code units of a string's array, its terminator
// included.
std::string storeText(BasicDataType to, int capacity, const Place& place, const std::string& value,
                      BasicDataType from);
// The same for a place of any type, null for none.
std::string storeText(const SymbolNames& names, const vel::SymbolDataType* to, const Place& place,
                      const std::string& value, BasicDataType from);

// `text` as the operand of a cast: in parentheses, if it is not already.
std::string enclosed(const std::string& text);

}  // namespace refhost
