#include "cli/value_format.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <ctime>

#include "cli/string_literal.h"

namespace velc {

namespace {

using vel::BasicDataType;

template <typename T>
T load(std::string_view bytes) {
  T value{};
  std::memcpy(&value, bytes.data(), sizeof value);
  return value;
}

template <typename T>
std::string integerText(std::string_view bytes, bool isBitString = false) {
  return isBitString ? fmt::format("16#{:X}", load<T>(bytes)) : fmt::format("{}", load<T>(bytes));
}

template <typename T>
std::string realText(T value) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-Inf" : "Inf";

  char buffer[32];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                 std::chars_format::scientific);
  const std::string_view text(buffer, static_cast<std::size_t>(end.ptr - buffer));
  const std::size_t mark = text.find('e');
  int exponent = 0;
  const char* digitsOfExponent = text.data() + mark + (text[mark + 1] == '+' ? 2 : 1);
  std::from_chars(digitsOfExponent, end.ptr, exponent);

  std::string result = std::signbit(value) ? "-" : "";
  if (exponent < -4 || exponent > 15) {
    const std::string_view mantissa = text.substr(0, mark);
    return result.append(mantissa)
        .append(mantissa.size() == 1 ? ".0" : "")
        .append(text.substr(mark));
  }
  std::string digits(text.substr(0, 1));
  if (mark > 2) digits.append(text.substr(2, mark - 2));
  if (exponent < 0) digits.insert(0, static_cast<std::size_t>(-exponent), '0');
  const std::size_t whole = exponent < 0 ? 1 : static_cast<std::size_t>(exponent) + 1;
  if (digits.size() < whole + 1) digits.resize(whole + 1, '0');
  return result.append(digits, 0, whole).append(".").append(digits, whole);
}

std::string dateText(std::uint32_t secondsSince1970) {
  const std::time_t seconds = secondsSince1970;
  std::tm date{};
  gmtime_r(&seconds, &date);
  return fmt::format("{:04}-{:02}-{:02}", date.tm_year + 1900, date.tm_mon + 1, date.tm_mday);
}

std::string clockText(std::uint32_t seconds) {
  return fmt::format("{:02}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

std::string timeOfDayText(std::uint32_t milliseconds) {
  std::string text = "TOD#" + clockText(milliseconds / 1000);
  if (milliseconds % 1000 != 0) text += fmt::format(".{:03}", milliseconds % 1000);
  return text;
}

constexpr std::uint32_t kSecondsOfDay = 24 * 60 * 60;

}  // namespace

std::string valueText(BasicDataType type, std::string_view typeName, std::string_view bytes) {
  switch (type) {
    case BasicDataType::Bool:
    case BasicDataType::BitAddress:
      return load<std::uint8_t>(bytes) != 0 ? "TRUE" : "FALSE";
    case BasicDataType::SInt:
      return integerText<std::int8_t>(bytes);
    case BasicDataType::Int:
      return integerText<std::int16_t>(bytes);
    case BasicDataType::DInt:
      return integerText<std::int32_t>(bytes);
    case BasicDataType::LInt:
      return integerText<std::int64_t>(bytes);
    case BasicDataType::USInt:
      return integerText<std::uint8_t>(bytes, typeName == "BYTE");
    case BasicDataType::UInt:
      return integerText<std::uint16_t>(bytes, typeName == "WORD");
    case BasicDataType::UDInt:
      return integerText<std::uint32_t>(bytes, typeName == "DWORD");
    case BasicDataType::ULInt:
      return integerText<std::uint64_t>(bytes, typeName == "LWORD");
    case BasicDataType::Pointer:
      return load<std::uintptr_t>(bytes) == 0 ? "NULL" : integerText<std::uintptr_t>(bytes, true);
    case BasicDataType::Real:
      return realText(load<float>(bytes));
    case BasicDataType::LReal:
      return realText(load<double>(bytes));
    case BasicDataType::Time:
      return fmt::format("T#{}ms", load<std::int32_t>(bytes));
    case BasicDataType::LTime:
      return fmt::format("LTIME#{}ns", load<std::int64_t>(bytes));
    case BasicDataType::Date:
      return "D#" + dateText(load<std::uint32_t>(bytes));
    case BasicDataType::TimeOfDay:
      return timeOfDayText(load<std::uint32_t>(bytes));
    case BasicDataType::DateAndTime: {
      const auto seconds = load<std::uint32_t>(bytes);
      return "DT#" + dateText(seconds) + "-" + clockText(seconds % kSecondsOfDay);
    }
    case BasicDataType::String:
      return stringLiteral(bytes);
    case BasicDataType::WString:
      return wideStringLiteral(bytes);
    default:
      return {};
  }
}

}  // namespace velc
