// Elementary types: their numbers, names, C types and sizes, and the rules for
// conversions between them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/basic_data_type.h"

namespace hostkit {

using vel::BasicDataType;

struct ElementaryType {
  BasicDataType type;
  const char* name;   // IEC name; null for a bit of device memory
  const char* cType;  // in generated code; for a string type, the type of an expression
  int size;           // bytes; 0 without a fixed size
};

// All elementary types with an IEC name. A bit string follows the unsigned integer whose number it
// shares.
struct ElementaryTypes {
  const ElementaryType* first;
  const ElementaryType* last;
  const ElementaryType* begin() const { return first; }
  const ElementaryType* end() const { return last; }
};
ElementaryTypes elementaryTypes();

// The row of a number; null when there is none. For a number that an integer and a bit string
// share, the row of the integer.
const ElementaryType* elementaryType(BasicDataType type);
// The row of a name or an alias such as TIME_OF_DAY, regardless of letter case.
const ElementaryType* elementaryType(std::string_view name);
// The type of an expression, by the name of an elementary type. BasicDataType::None for any other
// name, such as INVALID, which operators without a result give.
DataTypeInfo typeInfo(const std::string& name);
// The C type of an elementary type; empty for any other number.
const char* cType(BasicDataType type);

bool isSigned(BasicDataType type);
bool isUnsigned(BasicDataType type);  // bit strings included
bool isInteger(BasicDataType type);
bool isFloat(BasicDataType type);
bool isNumber(BasicDataType type);    // integer or float
bool isDuration(BasicDataType type);  // TIME, LTIME
bool isText(BasicDataType type);      // STRING, WSTRING
bool isBitStringName(std::string_view name);

// True when every value of `from` is a value of `to`.
bool widens(BasicDataType from, BasicDataType to);
// The type to which arithmetic converts two numbers; None when there is none.
BasicDataType commonNumber(BasicDataType a, BasicDataType b);

// Results of rateConversion, as AstNodeHelper::compareDataType defines them.
namespace rating {
constexpr int kFits = 0;
constexpr int kConverts = -1;
constexpr int kMismatch = -2;
constexpr int kConstantTooLarge = -3;
}  // namespace rating
int rateConversion(BasicDataType target, BasicDataType source, const char* sourceText);

}  // namespace hostkit
