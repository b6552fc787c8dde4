// A place in C: a value that can be read, written and pointed to.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/device_memory.h"
#include "refhost/emit/symbol_names.h"

namespace refhost {

struct Place {
  enum class Kind : std::uint8_t {
    Object,     // `text` is an lvalue
    Pointed,    // `text` is a pointer to it
    Part,       // the bits of the object `text` from bit `first` on: one, or as many as `cType` has
    MemoryBit,  // the bit of device memory that has the number `text`
    Memory,     // a cell of the type `cType` at byte `text` of device memory
  };
  Kind kind = Kind::Object;
  std::string text;
  const char* cType = nullptr;
  std::uint32_t first = 0;

  // The place of a device address whose cell has the type `cType`.
  static Place ofAddress(const vel::HeapAddress& address, vel::HeapRawAddr raw, const char* cType);
  // The place of a variable in device memory.
  static Place ofLocated(const SymbolNames& names, const VarSymbol& variable);
  // The same at the raw address that the C expression `at` has.
  static Place ofLocated(const SymbolNames& names, const VarSymbol& variable,
                         const std::string& at);
  // The member `name` of the structure at this place.
  Place member(std::string_view name) const;

  // The bits of the integer at this place from `bit` on: as many as `type` has, one of a BOOL.
  Place part(std::uint32_t bit, BasicDataType type) const;

  // The expression that reads it.
  std::string load() const;
  // The expression that assigns `value`, which must have the C type of the place.
  std::string store(std::string_view value) const;
  // A pointer to it, of the type `pointer`. Only if it has one.
  std::string address(std::string_view pointer) const;
  bool hasAddress() const { return kind != Kind::Part && kind != Kind::MemoryBit; }
};

// The C statement, without its semicolon, that assigns `value` of type `from` to `place` of type
// `to`. `capacity` is the size of a string's array in code units, its terminator included.
std::string storeText(BasicDataType to, int capacity, const Place& place, const std::string& value,
                      BasicDataType from);
// The same for a place of a type that need not be elementary; null if it is unknown.
std::string storeText(const SymbolNames& names, const vel::SymbolDataType* to, const Place& place,
                      const std::string& value, BasicDataType from);

// `text` as the operand of a cast, in parentheses unless it has them.
std::string enclosed(const std::string& text);
// `text` without the parentheses around it.
std::string_view unparenthesized(std::string_view text);

}  // namespace refhost
