#include "cli/value_parse.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "hostkit/encoding.h"
#include "hostkit/folding.h"
#include "hostkit/literal.h"

namespace velc {

namespace {

using hostkit::LiteralForm;
using hostkit::LiteralValue;
using vel::BasicDataType;

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

std::optional<std::string> integerBytes(const LiteralValue& value, BasicDataType type, int size) {
  if (!hostkit::integerFits(value.negative, value.magnitude, type)) return {};
  return lowBytes(value.negative ? 0 - value.magnitude : value.magnitude, size);
}

std::optional<std::string> realBytes(const std::string& text, BasicDataType type) {
  const bool single = type == BasicDataType::Real;
  const auto bytes = [single](double value) {
    return single ? memory(static_cast<float>(value)) : memory(value);
  };
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (text == "NaN") return bytes(std::numeric_limits<double>::quiet_NaN());
  if (text == "Inf") return bytes(kInfinity);
  if (text == "-Inf") return bytes(-kInfinity);
  LiteralValue value;
  const bool parsed = hostkit::parseLiteral(text, value) == hostkit::LiteralError::None &&
                      value.form == LiteralForm::Real;
  if (!parsed) return {};
  // Rounded once.
  if (!single) return memory(std::strtod(value.text.c_str(), nullptr));
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

}  // namespace

std::optional<std::string> valueBytes(const refhost::ValueShape& shape, const std::string& text) {
  for (const auto& [number, name] : shape.names) {
    if (hostkit::equalIgnoringCase(name, text)) {
      return lowBytes(static_cast<std::uint64_t>(number), shape.byteSize);
    }
  }
  const BasicDataType type = shape.type;
  if (type == BasicDataType::Real || type == BasicDataType::LReal) return realBytes(text, type);
  LiteralValue value;
  if (hostkit::parseLiteral(text, value) != hostkit::LiteralError::None) return {};
  switch (value.form) {
    case LiteralForm::Bool:
      if (type != BasicDataType::Bool && type != BasicDataType::BitAddress) return {};
      return lowBytes(value.magnitude, shape.byteSize);
    case LiteralForm::Integer:
      if (!shape.allows({value.negative, value.magnitude})) return {};
      return integerBytes(value, type, shape.byteSize);
    case LiteralForm::String:
      if (value.type != type) return {};
      return textBytes(value, type, shape.byteSize);
    case LiteralForm::Duration:
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

}  // namespace velc
