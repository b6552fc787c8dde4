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
  const char* cType;  // in generated code; of a value for the string types
  int size;           // bytes; 0 without a fixed size
};

// All that have an IEC name, once each; a bit string follows the unsigned integer whose number
// it shares.
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
// What an expression of the type of that name has as its type: none for a name that is no
// elementary type's, such as the INVALID of operators without a result.
DataTypeInfo typeInfo(const std::string& name);
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

// Ratings of AstNodeHelper::compareDataType: rateConversion gives these.
namespace rating {
constexpr int kFits = 0;
constexpr int kConverts = -1;
constexpr int kMismatch = -2;
constexpr int kConstantTooLarge = -3;
}  // namespace rating
int rateConversion(BasicDataType target, BasicDataType source, const char* sourceText);

}  // namespace hostkit
