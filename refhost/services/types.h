// The string types, and properties of any data type.
#pragma once

#include <string>

#include "host/symbol.h"
#include "hostkit/elementary_types.h"
#include "hostkit/literal.h"
#include "refhost/kit.h"

namespace refhost {

// STRING[n] or WSTRING[n].
class StringType final : public vel::SymbolDataType {
 public:
  static constexpr int kDefaultLength = 80;
  static constexpr int kMaxLength = 32767;

  StringType(BasicDataType type, int characters);

  int length() const { return length_; }
  // The size of the C array in bytes, its terminator included.
  int byteSize() const;

 private:
  int length_;
};

// True of an untyped 0 or 1, which is FALSE or TRUE where a BOOL is expected.
bool isBoolNumber(const LiteralValue& literal);

// The number of bits that a program can access in a variable of the type: 1 for a BOOL.
int bitCount(const vel::SymbolDataType& type);

// The name of a type in messages: the declared name of a derived type or a bit string, else that
// of the elementary type. An enumeration or a structure without a name is described by its parts.
std::string displayName(const vel::SymbolDataType* type);

// True of a type to which the program gives no name. Its own one is internal.
bool isAnonymous(const vel::SymbolDataType& type);

// True if the two types have one representation. A subrange counts as its base type, BYTE as
// USINT; derived types must be the very same.
bool sameType(const vel::SymbolDataType& a, const vel::SymbolDataType& b);

// The capacity of a string variable in characters.
int stringLength(const vel::SymbolDataType& type);

}  // namespace refhost
