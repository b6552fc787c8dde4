#include "cli/value_parse.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>

#include "cli/excerpt.h"
#include "hostkit/encoding.h"
#include "hostkit/folding.h"
#include "hostkit/literal.h"

namespace velc {

namespace {

using hostkit::equalIgnoringCase;
using hostkit::LiteralError;
using hostkit::LiteralForm;
using hostkit::LiteralValue;
using vel::BasicDataType;

constexpr std::int64_t kNanosecondsInMillisecond = 1'000'000;

template <typename T>
std::string memory(T value) {
  return {reinterpret_cast<const char*>(&value), sizeof value};
}

// The machine is little-endian, see velrt/memory.h.
std::string lowBytes(std::uint64_t value, int size) {
  return memory(value).substr(0, static_cast<std::size_t>(size));
}

std::string padded(std::string bytes, int size) {
  bytes.resize(static_cast<std::size_t>(size));
  return bytes;
}

// Numbers that no literal denotes.
std::optional<double> specialReal(const std::string& text) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (equalIgnoringCase(text, "NaN")) return std::numeric_limits<double>::quiet_NaN();
  if (equalIgnoringCase(text, "Inf") || equalIgnoringCase(text, "+Inf")) return kInfinity;
  if (equalIgnoringCase(text, "-Inf")) return -kInfinity;
  return {};
}

std::string realBytes(double value, BasicDataType type) {
  return type == BasicDataType::Real ? memory(static_cast<float>(value)) : memory(value);
}

std::optional<std::string> realBytes(const LiteralValue& value, BasicDataType type) {
  // Rounded once.
  if (value.form == LiteralForm::Integer) {
    const auto bytes = [&value](auto magnitude) {
      return memory(value.negative ? -magnitude : magnitude);
    };
    return type == BasicDataType::Real ? bytes(static_cast<float>(value.magnitude))
                                       : bytes(static_cast<double>(value.magnitude));
  }
  if (value.form != LiteralForm::Real) return {};
  if (type == BasicDataType::LReal) return memory(std::strtod(value.text.c_str(), nullptr));
  const float number = std::strtof(value.text.c_str(), nullptr);
  return std::isinf(number) ? std::nullopt : std::optional(memory(number));
}

std::optional<std::string> textBytes(const LiteralValue& value, BasicDataType type, int size) {
  std::string bytes = value.text;
  std::size_t terminator = 1;
  if (type == BasicDataType::WString) {
    const std::u16string units = hostkit::utf16(value.text);
    bytes.assign(reinterpret_cast<const char*>(units.data()), units.size() * sizeof units[0]);
    terminator = sizeof units[0];
  }
  if (bytes.size() + terminator > static_cast<std::size_t>(size)) return {};
  return padded(std::move(bytes), size);
}

std::optional<std::string> literalBytes(const refhost::ValueShape& shape,
                                        const LiteralValue& value) {
  const BasicDataType type = shape.type;
  const bool flag = type == BasicDataType::Bool || type == BasicDataType::BitAddress;
  if (type == BasicDataType::Real || type == BasicDataType::LReal) return realBytes(value, type);
  switch (value.form) {
    case LiteralForm::Bool:
      if (!flag) return {};
      return lowBytes(value.magnitude, shape.byteSize);
    case LiteralForm::Integer:
      if (flag && !value.fixedType && !value.negative && value.magnitude <= 1) {
        return lowBytes(value.magnitude, shape.byteSize);
      }
      if (!shape.range || !shape.allows({value.negative, value.magnitude})) return {};
      return lowBytes(value.negative ? 0 - value.magnitude : value.magnitude, shape.byteSize);
    case LiteralForm::String:
      if (value.type != type) return {};
      return textBytes(value, type, shape.byteSize);
    case LiteralForm::Duration:
      if (value.type == BasicDataType::Time && type == BasicDataType::LTime) {
        return memory(value.ticks * kNanosecondsInMillisecond);
      }
      [[fallthrough]];
    case LiteralForm::Date:
    case LiteralForm::TimeOfDay:
    case LiteralForm::DateAndTime:
      if (value.type != type) return {};
      return lowBytes(static_cast<std::uint64_t>(value.ticks), shape.byteSize);
    case LiteralForm::Real:
      break;
  }
  return {};
}

// The value of an enumeration that `text` names, with or without the name of the type, or whose
// number it is.
std::optional<std::int64_t> enumerated(const refhost::ValueShape& shape, std::string_view text) {
  const std::size_t mark = text.find('#');
  if (mark != std::string_view::npos && equalIgnoringCase(text.substr(0, mark), shape.typeName)) {
    text.remove_prefix(mark + 1);
  }
  bool negative = false;
  std::uint64_t magnitude = 0;
  const bool isNumber = hostkit::parseIntegerLiteral(text, negative, magnitude);
  const std::uint64_t wanted = negative ? 0 - magnitude : magnitude;
  for (const auto& [number, name] : shape.names) {
    if (equalIgnoringCase(name, text)) return number;
    if (isNumber && static_cast<std::uint64_t>(number) == wanted) return number;
  }
  return {};
}

std::string numberText(const refhost::ValueShape::Number& number) {
  return fmt::format("{}{}", number.negative ? "-" : "", number.magnitude);
}

// Why a literal of this form is no value of `shape`.
std::string refusal(const refhost::ValueShape& shape, const std::string& text,
                    const LiteralValue& value) {
  if (!shape.names.empty())
    return fmt::format("{} is no value of {}", inQuotes(text), shape.typeName);
  if (value.form == LiteralForm::Integer && shape.range) {
    return fmt::format("{} is not in the range {}..{} of {}", inQuotes(text),
                       numberText(shape.range->first), numberText(shape.range->second),
                       shape.typeName);
  }
  if (value.form == LiteralForm::Real && shape.type == BasicDataType::Real) {
    return fmt::format("{} is out of the range of REAL", inQuotes(text));
  }
  if (value.form == LiteralForm::String && value.type == shape.type) {
    const int unit = shape.type == BasicDataType::WString ? 2 : 1;
    return fmt::format("{} is longer than {}[{}]", shortened(printable(text)), shape.typeName,
                       shape.byteSize / unit - 1);
  }
  return fmt::format("{} is not a value of type {}", inQuotes(text), shape.typeName);
}

}  // namespace

bool parseValue(const refhost::ValueShape& shape, const std::string& text, std::string& bytes,
                std::string& error) {
  if (const auto number = enumerated(shape, text)) {
    bytes = lowBytes(static_cast<std::uint64_t>(*number), shape.byteSize);
    return true;
  }
  const bool real = shape.type == BasicDataType::Real || shape.type == BasicDataType::LReal;
  if (const auto special = real ? specialReal(text) : std::nullopt) {
    bytes = realBytes(*special, shape.type);
    return true;
  }
  LiteralValue value;
  switch (hostkit::parseLiteral(text, value)) {
    case LiteralError::None:
      break;
    case LiteralError::OutOfRange:
      error = shape.range && text.find_first_not_of("+-_0123456789") == std::string::npos
                  ? refusal(shape, text, {})
                  : inQuotes(text) + " is out of range";
      return false;
    default:
      error = inQuotes(text) + " is not a literal";
      if (shape.type == BasicDataType::String) error += "; a STRING stands in quotes, 'a'";
      if (shape.type == BasicDataType::WString) error += "; a WSTRING stands in quotes, \"a\"";
      if (!shape.names.empty()) error += " and no value of " + shape.typeName;
      return false;
  }
  if (auto memory = shape.names.empty() ? literalBytes(shape, value) : std::nullopt) {
    bytes = std::move(*memory);
    return true;
  }
  error = refusal(shape, text, value);
  return false;
}

}  // namespace velc
