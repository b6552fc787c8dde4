#include "fuzz/programs/values.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <limits>
#include <regex>

namespace generated {

const std::vector<Type>& types() {
  static const std::vector<Type> all = {
      {"BOOL", Type::Bool, 1},        {"SINT", Type::Signed, 8},     {"INT", Type::Signed, 16},
      {"DINT", Type::Signed, 32},     {"LINT", Type::Signed, 64},    {"USINT", Type::Unsigned, 8},
      {"UINT", Type::Unsigned, 16},   {"UDINT", Type::Unsigned, 32}, {"ULINT", Type::Unsigned, 64},
      {"BYTE", Type::Unsigned, 8},    {"WORD", Type::Unsigned, 16},  {"DWORD", Type::Unsigned, 32},
      {"LWORD", Type::Unsigned, 64},  {"REAL", Type::Real, 32},      {"LREAL", Type::Real, 64},
      {"TIME", Type::Duration, 32},   {"LTIME", Type::Duration, 64}, {"DATE", Type::Date, 32},
      {"TOD", Type::TimeOfDay, 32},   {"DT", Type::DateAndTime, 32}, {"STRING", Type::Text, 8},
      {"WSTRING", Type::WideText, 16}};
  return all;
}

const Type& type(Type::Kind kind, int bits) {
  const Type wanted{"", kind, bits};
  return *std::find_if(types().begin(), types().end(),
                       [&](const Type& row) { return row.alike(wanted); });
}

Value integer(const Type& type, Wide number) {
  const Wide modulus = Wide{1} << type.bits;
  const bool negatives = type.kind == Type::Signed || type.kind == Type::Duration;
  number &= modulus - 1;
  return {&type, negatives && number >= modulus / 2 ? number - modulus : number};
}
Value real(const Type& type, double number) {
  return {&type, 0, type.bits == 32 ? static_cast<float>(number) : number};
}
Value boolean(bool value) { return {&type(Type::Bool, 1), value}; }

bool holds(const Type& whole, const Type& part) {
  if (whole.kind == part.kind) return whole.bits >= part.bits;
  if (whole.kind == Type::Signed) return part.kind == Type::Unsigned && whole.bits > part.bits;
  const int mantissa = whole.bits == 32 ? 24 : 53;
  return whole.kind == Type::Real && part.integer() &&
         part.bits - (part.kind == Type::Signed ? 1 : 0) <= mantissa;
}

const Type& common(const Type& a, const Type& b) {
  if (holds(a, b)) return a;
  if (holds(b, a)) return b;
  if (a.kind == Type::Real) return a;
  if (b.kind == Type::Real) return b;
  const int ofUnsigned = a.kind == Type::Unsigned ? a.bits : b.bits;
  const int ofSigned = a.kind == Type::Unsigned ? b.bits : a.bits;
  return type(Type::Signed, std::min(64, std::max(ofSigned, 2 * ofUnsigned)));
}

bool assignable(const Type& to, const Type& from) {
  if (holds(to, from)) return true;
  return to.number() && from.number() && (to.kind == Type::Real || from.integer());
}

Value cast(const Type& to, const Value& value) {
  if (to.kind >= Type::Enumeration) return value;
  if (to.text()) return {&to, 0, 0, value.text};
  const bool fromReal = value.type->kind == Type::Real;
  if (to.kind == Type::Real) {
    if (fromReal) return real(to, value.real);
    if (to.bits == 32) return real(to, static_cast<float>(value.number));
    return real(to, static_cast<double>(value.number));
  }
  if (!fromReal) return integer(to, value.number);
  constexpr double kBeyond = 18446744073709551616.0;
  if (!(std::fabs(value.real) < kBeyond)) throw Undefined("a real that no integer holds");
  const Value whole = integer(to, static_cast<Wide>(value.real));
  if (whole.number != static_cast<Wide>(value.real)) throw Undefined("a real out of range");
  return whole;
}

Value converted(const Type& to, const Value& value) {
  const bool scaled = to.kind == Type::Duration && to.bits > value.type->bits;
  return scaled ? integer(to, value.number * 1000000) : cast(to, value);
}

Value rounded(const Type& to, const Value& value) {
  const Type& lreal = type(Type::Real, 64);
  const double x = cast(lreal, value).real;
  return cast(to, real(lreal, x >= 0 ? x + 0.5 : x - 0.5));
}

int order(const Value& a, const Value& b) {
  const auto sign = [](const auto& x, const auto& y) { return x < y ? -1 : x > y ? 1 : 0; };
  if (a.type->text() || a.type->kind == Type::Pointer) return sign(a.text, b.text);
  if (a.type->kind != Type::Real) return sign(a.number, b.number);
  return std::isnan(a.real) || std::isnan(b.real) ? 2 : sign(a.real, b.real);
}

namespace {

std::string realText(const Value& value) {
  if (std::isnan(value.real)) return "NaN";
  if (std::isinf(value.real)) return value.real < 0 ? "-Inf" : "Inf";
  // The fewest digits that tell a REAL, written as an LREAL is.
  const bool single = value.type->bits == 32;
  std::string text = fmt::format(
      "{}", single ? std::stod(fmt::format("{}", static_cast<float>(value.real))) : value.real);
  if (text.find('.') == std::string::npos) text.insert(std::min(text.find('e'), text.size()), ".0");
  return text;
}

std::string clockText(const Value& value) {
  const auto n = static_cast<std::int64_t>(value.number);
  if (value.type->kind == Type::TimeOfDay) {
    const std::string text =
        fmt::format("TOD#{:02}:{:02}:{:02}", n / 3600000, n / 60000 % 60, n / 1000 % 60);
    return n % 1000 == 0 ? text : fmt::format("{}.{:03}", text, n % 1000);
  }
  const std::time_t seconds = n;
  std::tm parts{};
  gmtime_r(&seconds, &parts);
  char text[40];
  const bool date = value.type->kind == Type::Date;
  std::strftime(text, sizeof text, date ? "D#%Y-%m-%d" : "DT#%Y-%m-%d-%H:%M:%S", &parts);
  return text;
}

}  // namespace

std::string printed(const Value& value) {
  const Type& type = *value.type;
  if (type.kind == Type::Bool) return value.number != 0 ? "TRUE" : "FALSE";
  if (type.integer()) return fmt::format("{}", value.number);
  if (type.kind == Type::Real) return realText(value);
  if (type.kind == Type::Duration) {
    return fmt::format(type.bits == 32 ? "T#{}ms" : "LTIME#{}ns", value.number);
  }
  return type.kind < Type::Text ? clockText(value) : value.text;
}

Value parsed(const Type& type, const std::string& text) {
  static const std::regex number(R"(-?\d{1,30})");
  static const std::regex decimal(R"(-?\d+\.\d+(e[-+]\d+)?)");
  static const std::regex nothing(R"(TRUE|FALSE|[g-zG-Z!$ ]*)");
  if (std::regex_match(text, nothing))
    return converted(type, boolean(type.kind == Type::Bool && text == "TRUE"));
  if (type.integer() && std::regex_match(text, number)) {
    const Wide half = Wide{1} << (type.bits - 1);
    const Wide lowest = type.kind == Type::Signed ? -half : 0;
    Wide whole = 0;
    for (const char c : text) whole = c == '-' ? 0 : whole * 10 + (c - '0');
    if (text[0] == '-') whole = -whole;
    return {&type, std::clamp<Wide>(whole, lowest, lowest + 2 * half - 1)};
  }
  if (type.kind == Type::Real && std::regex_match(text, decimal)) {
    const char* const start = text.c_str();
    return {&type, 0, type.bits == 32 ? std::strtof(start, nullptr) : std::strtod(start, nullptr)};
  }
  // Else the text that the type prints; other forms are for the tests of the runtime.
  Value found{&type};
  const char* const start = text.c_str();
  if (type.kind == Type::Duration) {
    const std::size_t digits = std::min(text.size(), text.find('#') + 1);
    found.number = std::strtoll(start + digits, nullptr, 10);
  } else if (type.kind >= Type::Date && !type.text()) {
    const bool clock = type.kind == Type::TimeOfDay;
    std::tm parts{};
    if (clock) parts.tm_year = 70, parts.tm_mday = 1;
    const char* const end = strptime(start,
                                     clock                     ? "TOD#%H:%M:%S"
                                     : type.kind == Type::Date ? "D#%Y-%m-%d"
                                                               : "DT#%Y-%m-%d-%H:%M:%S",
                                     &parts);
    found.number = static_cast<Wide>(timegm(&parts)) * (clock ? 1000 : 1);
    if (end != nullptr && *end == '.') found.number += std::atoi(end + 1);
  }
  if (printed(found) != text) throw Undefined("a text of an unusual form");
  return found;
}

std::string bytes(const Value& value, std::size_t size) {
  std::string result(size, '\0');
  const std::size_t unit = static_cast<std::size_t>(value.type->bits) / 8;
  for (std::size_t i = 0; i < value.text.size(); ++i) result[i * unit] = value.text[i];
  if (value.type->text()) return result;
  const auto single = static_cast<float>(value.real);
  const void* held = &value.number;
  if (value.type->kind == Type::Real) held = &value.real;
  if (value.type->kind == Type::Real && size == sizeof single) held = &single;
  std::memcpy(result.data(), held, size);
  return result;
}

std::vector<std::string> subscripts(const Bounds& bounds) {
  if (bounds.empty()) return {};
  std::vector<std::string> result = {"["};
  for (const auto& [first, last] : bounds) {
    std::vector<std::string> longer;
    for (const std::string& before : result) {
      for (long i = first; i <= last; ++i) {
        longer.push_back(before + (before == "[" ? "" : ",") + std::to_string(i));
      }
    }
    result = std::move(longer);
  }
  for (std::string& each : result) each += ']';
  return result;
}

std::vector<Part> partsOf(const Type& type) {
  std::vector<Part> result;
  for (const Part& part : type.parts) result.push_back({'.' + part.name, part.initial});
  for (const std::string& at : subscripts(type.bounds)) {
    result.push_back({at, initialOf(*type.element)});
  }
  return result;
}

Value initialOf(const Type& type) {
  return {&type, type.kind == Type::Enumeration ? type.names[0].second : 0};
}

}  // namespace generated
