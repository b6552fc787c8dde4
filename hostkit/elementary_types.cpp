#include "hostkit/elementary_types.h"

#include <array>
#include <cstddef>

#include "hostkit/folding.h"
#include "hostkit/literal.h"

namespace hostkit {
namespace {

// clang-format off
constexpr std::array<ElementaryType, 23> kTypes{{
    {BasicDataType::SInt,        "SINT",    "i8",    1},
    {BasicDataType::Int,         "INT",     "i16",   2},
    {BasicDataType::DInt,        "DINT",    "i32",   4},
    {BasicDataType::LInt,        "LINT",    "i64",   8},
    {BasicDataType::USInt,       "USINT",   "u8",    1},
    {BasicDataType::USInt,       "BYTE",    "u8",    1},
    {BasicDataType::UInt,        "UINT",    "u16",   2},
    {BasicDataType::UInt,        "WORD",    "u16",   2},
    {BasicDataType::UDInt,       "UDINT",   "u32",   4},
    {BasicDataType::UDInt,       "DWORD",   "u32",   4},
    {BasicDataType::ULInt,       "ULINT",   "u64",   8},
    {BasicDataType::ULInt,       "LWORD",   "u64",   8},
    {BasicDataType::Bool,        "BOOL",    "u8",    1},
    {BasicDataType::Real,        "REAL",    "f32",   4},
    {BasicDataType::LReal,       "LREAL",   "f64",   8},
    {BasicDataType::Time,        "TIME",    "i32",   4},
    {BasicDataType::LTime,       "LTIME",   "i64",   8},
    {BasicDataType::Date,        "DATE",    "u32",   4},
    {BasicDataType::TimeOfDay,   "TOD",     "u32",   4},
    {BasicDataType::DateAndTime, "DT",      "u32",   4},
    {BasicDataType::String,      "STRING",  "char*", 0},
    {BasicDataType::WString,     "WSTRING", "u16*",  0},
    // Has to be the last row: a bit of device memory is accessed as a BOOL but has no IEC name.
    {BasicDataType::BitAddress,  nullptr,   "u8",    1},
}};
// clang-format on

struct Alias {
  std::string_view name;
  BasicDataType type;
};
constexpr std::array<Alias, 2> kAliases{
    {{"TIME_OF_DAY", BasicDataType::TimeOfDay}, {"DATE_AND_TIME", BasicDataType::DateAndTime}}};

constexpr int number(BasicDataType type) { return static_cast<int>(type); }

// Binary logarithm of an integer's size in bytes: 0 for SINT and USINT, 3 for LINT and ULINT.
int width(BasicDataType type) { return (number(type) - 1) % 4; }

// Integers of up to this many bits are converted without loss.
int mantissaBits(BasicDataType type) { return type == BasicDataType::Real ? 24 : 53; }
int valueBits(BasicDataType integer) {
  const int bits = 8 << width(integer);
  return isSigned(integer) ? bits - 1 : bits;
}

}  // namespace

ElementaryTypes elementaryTypes() { return {kTypes.data(), kTypes.data() + kTypes.size() - 1}; }

const ElementaryType* elementaryType(BasicDataType type) {
  constexpr std::size_t kNumbers = number(BasicDataType::BitAddress) + 1;
  // The first row of each number; kTypes.size() for a number without a row.
  static constexpr auto kRows = [] {
    std::array<std::size_t, kNumbers> rows{};
    for (std::size_t& row : rows) row = kTypes.size();
    for (std::size_t row = kTypes.size(); row-- > 0;) {
      rows[static_cast<std::size_t>(number(kTypes[row].type))] = row;
    }
    return rows;
  }();
  const auto index = static_cast<std::size_t>(number(type));
  return index < kNumbers && kRows[index] < kTypes.size() ? &kTypes[kRows[index]] : nullptr;
}

const ElementaryType* elementaryType(std::string_view name) {
  for (const ElementaryType& row : kTypes) {
    if (row.name != nullptr && equalIgnoringCase(row.name, name)) return &row;
  }
  for (const Alias& alias : kAliases) {
    if (equalIgnoringCase(alias.name, name)) return elementaryType(alias.type);
  }
  return nullptr;
}

DataTypeInfo typeInfo(const std::string& name) {
  const ElementaryType* const row = elementaryType(name);
  return row != nullptr ? DataTypeInfo{row->type, name} : DataTypeInfo();
}

const char* cType(BasicDataType type) {
  const ElementaryType* const row = elementaryType(type);
  return row != nullptr ? row->cType : "";
}

bool isSigned(BasicDataType type) {
  return type >= BasicDataType::SInt && type <= BasicDataType::LInt;
}
bool isUnsigned(BasicDataType type) {
  return type >= BasicDataType::USInt && type <= BasicDataType::ULInt;
}
bool isInteger(BasicDataType type) { return isSigned(type) || isUnsigned(type); }
bool isFloat(BasicDataType type) {
  return type == BasicDataType::Real || type == BasicDataType::LReal;
}
bool isNumber(BasicDataType type) { return isInteger(type) || isFloat(type); }
bool isDuration(BasicDataType type) {
  return type == BasicDataType::Time || type == BasicDataType::LTime;
}
bool isText(BasicDataType type) {
  return type == BasicDataType::String || type == BasicDataType::WString;
}

bool isBitStringName(std::string_view name) {
  return equalIgnoringCase(name, "BYTE") || equalIgnoringCase(name, "WORD") ||
         equalIgnoringCase(name, "DWORD") || equalIgnoringCase(name, "LWORD");
}

bool widens(BasicDataType from, BasicDataType to) {
  if (from == to) return true;
  if (from == BasicDataType::Time && to == BasicDataType::LTime) return true;
  if (from == BasicDataType::Real && to == BasicDataType::LReal) return true;
  if (!isInteger(from)) return false;
  if (isFloat(to)) return valueBits(from) <= mantissaBits(to);
  if (!isInteger(to)) return false;
  if (isSigned(from)) return isSigned(to) && width(from) < width(to);
  return width(from) < width(to);
}

BasicDataType commonNumber(BasicDataType a, BasicDataType b) {
  if (!isNumber(a) || !isNumber(b)) return BasicDataType::None;
  if (widens(a, b)) return b;
  if (widens(b, a)) return a;
  if (isFloat(a)) return a;
  if (isFloat(b)) return b;
  // One is signed and the other unsigned: use the signed type that holds the values of both.
  const int wider = width(a) > width(b) ? width(a) : width(b);
  const int unsignedWidth = isUnsigned(a) ? width(a) : width(b);
  const int needed = wider > unsignedWidth ? wider : unsignedWidth + 1;
  return static_cast<BasicDataType>(1 + (needed < 3 ? needed : 3));
}

int rateConversion(BasicDataType target, BasicDataType source, const char* sourceText) {
  if (target == BasicDataType::None || source == BasicDataType::None || target == source) {
    return rating::kFits;
  }
  if (isNumber(target) && sourceText != nullptr) {
    bool negative = false;
    std::uint64_t magnitude = 0;
    if (parseIntegerLiteral(sourceText, negative, magnitude)) {
      return integerFits(negative, magnitude, target) ? rating::kFits : rating::kConstantTooLarge;
    }
  }
  if (widens(source, target)) return rating::kFits;
  // Operators treat an address as an unsigned integer.
  const bool address = target == BasicDataType::UDInt || target == BasicDataType::ULInt;
  if (source == BasicDataType::Pointer && address) return rating::kFits;
  if (isInteger(source) && isInteger(target)) {
    return isSigned(source) == isSigned(target) ? rating::kMismatch : rating::kConverts;
  }
  if (isInteger(source) && isFloat(target)) return rating::kConverts;
  if (source == BasicDataType::LReal && target == BasicDataType::Real) return rating::kConverts;
  return rating::kMismatch;
}

}  // namespace hostkit
