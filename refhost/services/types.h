// Elementary types: their numbers, names, C types and sizes, and the rules for
// conversions between them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/basic_data_type.h"
#include "host/symbol.h"

namespace refhost {

using vel::BasicDataType;

struct ElementaryType {
  BasicDataType type;
  const char* name;   // IEC name
  const char* cType;  // in generated code; of a value for the string types
  int size;           // bytes; 0 without a fixed size
};

// All of them; a bit string follows the unsigned integer whose number it shares.
struct ElementaryTypes {
  const ElementaryType* first;
  const ElementaryType* last;
  const ElementaryType* begin() const { return first; }
  const ElementaryType* end() const { return last; }
};
ElementaryTypes elementaryTypes();

// The row of a number, the integer's for a number that it shares with a bit
// string; null when there is none.
const ElementaryType* elementaryType(BasicDataType type);
// The row of a name in any letter case, aliases such as TIME_OF_DAY included.
const ElementaryType* elementaryType(std::string_view name);
// The C type of an elementary type, empty for all others.
const char* cType(BasicDataType type);

bool isSigned(BasicDataType type);
bool isUnsigned(BasicDataType type);  // bit strings included
bool isInteger(BasicDataType type);
bool isFloat(BasicDataType type);
bool isNumber(BasicDataType type);    // integer or float
bool isDuration(BasicDataType type);  // TIME, LTIME
bool isText(BasicDataType type);      // STRING, WSTRING
bool isBitStringName(std::string_view name);

// Every value of `from` is a value of `to`.
bool widens(BasicDataType from, BasicDataType to);
// The type in which two numbers meet in arithmetic; None when there is none.
BasicDataType commonNumber(BasicDataType a, BasicDataType b);

// Ratings of AstNodeHelper::compareDataType.
namespace rating {
constexpr int kFits = 0;
constexpr int kConverts = -1;
constexpr int kMismatch = -2;
constexpr int kConstantTooLarge = -3;
}  // namespace rating
int rateConversion(BasicDataType target, BasicDataType source, const char* sourceText);

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
