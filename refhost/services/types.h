// Types of strings, and what the analysis and the emission ask of any data type.
#pragma once

#include <string>

#include "host/symbol.h"
#include "hostkit/elementary_types.h"
#include "refhost/kit.h"

namespace refhost {

// STRING[n] or WSTRING[n].
class StringType final : public vel::SymbolDataType {
 public:
  static constexpr int kDefaultLength = 80;
  static constexpr int kMaxLength = 32767;

  StringType(BasicDataType type, int characters);

  int length() const { return length_; }
  // Bytes of the C array, its terminator included.
  int byteSize() const;

 private:
  int length_;
};

// Bits that a variable of the type has for the program: 1 for a BOOL.
int bitCount(const vel::SymbolDataType& type);

// The name that messages give a type: a derived type's or a bit string's own, else the
// IEC name of its number; "INVALID" for no type.
std::string displayName(const vel::SymbolDataType* type);

// Variables of the two types hold the same values in the same way.
bool sameType(const vel::SymbolDataType& a, const vel::SymbolDataType& b);

// The capacity of a string's variable in characters.
int stringLength(const vel::SymbolDataType& type);

}  // namespace refhost
