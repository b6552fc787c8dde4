#include "tests/execution/values.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace execution {

const std::vector<Type>& types() {
  // clang-format off
  static const std::vector<Type> all = {
      {"BOOL", Type::Bool, 8}, {"BYTE", Type::Unsigned, 8}, {"WORD", Type::Unsigned, 16},
      {"DWORD", Type::Unsigned, 32}, {"LWORD", Type::Unsigned, 64}, {"SINT", Type::Signed, 8},
      {"USINT", Type::Unsigned, 8}, {"INT", Type::Signed, 16}, {"UINT", Type::Unsigned, 16},
      {"DINT", Type::Signed, 32}, {"UDINT", Type::Unsigned, 32}, {"LINT", Type::Signed, 64},
      {"ULINT", Type::Unsigned, 64}, {"REAL", Type::Real, 32}, {"LREAL", Type::Real, 64},
      {"TIME", Type::Signed, 32, true}, {"LTIME", Type::Signed, 64, true},
      {"DATE", Type::Unsigned, 32, true}, {"TOD", Type::Unsigned, 32, true},
      {"DT", Type::Unsigned, 32, true}, {"STRING", Type::Text, 8}, {"WSTRING", Type::Text, 16}};
  // clang-format on
  return all;
}

const Type& typeOf(const std::string& name) {
  return *std::find_if(types().begin(), types().end(),
                       [&](const Type& type) { return type.name == name; });
}

Value value(const std::string& type, Number number) {
  return *converted(typeOf(type), {&typeOf("LINT"), number, {}});
}

Value text(const std::string& type, const std::string& units) { return {&typeOf(type), 0, units}; }

Number lowest(const Type& type) {
  return type.kind == Type::Signed ? -std::ldexp(Number{1}, type.bits - 1) : 0;
}
Number highest(const Type& type) { return lowest(type) + std::ldexp(Number{1}, type.bits) - 1; }

std::optional<Value> converted(const Type& target, const Value& source) {
  const Number x = source.number;
  if (target.kind == Type::Bool) return Value{&target, x != 0 ? Number{1} : 0, {}};
  if (target.kind == Type::Real && target.bits == 32)
    return Value{&target, static_cast<float>(x), {}};
  if (target.kind == Type::Real) return Value{&target, static_cast<double>(x), {}};
  const Number whole = std::trunc(x) + 0;  // no integer is -0
  const Number turns = std::floor((whole - lowest(target)) / std::ldexp(Number{1}, target.bits));
  if (source.type->kind == Type::Real && turns != 0) return std::nullopt;
  return Value{&target, turns == 0 ? whole : whole - std::ldexp(turns, target.bits), {}};
}

std::vector<Value> samples(const Type& type) {
  std::vector<Number> numbers = {0, 1};
  if (type.kind == Type::Real) {
    const Number most = type.bits == 32 ? Number{std::numeric_limits<float>::max()}
                                        : Number{std::numeric_limits<double>::max()};
    const Number least = type.bits == 32 ? Number{std::numeric_limits<float>::denorm_min()}
                                         : Number{std::numeric_limits<double>::denorm_min()};
    numbers = {std::nanl(""), 2.5L, -2.5L, HUGE_VALL, -HUGE_VALL, -0.0L, 0, 1, -1};
    for (const Number x : {0.5L, 0.49L, Number{0.49999999999999994}, 1.5L, 127.5L, 254.4L, 255.5L,
                           32767.49L, 2147483647.4L, 0.1L, 3.25e-5L, 1e16L, 2.5e17L, most, least}) {
      numbers.insert(numbers.end(), {x, -x});
    }
  } else if (type.kind != Type::Bool) {
    numbers = {0, 1, -1, lowest(type), highest(type), 86399999, 86400000};
  }
  for (const int bits : {7, 8, 15, 16, 24, 31, 32, 53, 63, 64}) {
    const Number limit = std::ldexp(Number{1}, bits);
    numbers.insert(numbers.end(), {limit - 1, limit, -limit, -limit - 1});
  }
  std::vector<Value> result;
  for (const Number x : numbers) {
    const Value sample = value(type.name, x);
    const auto equal = [&](const Value& other) { return same(other, sample, 0); };
    const bool fits = type.kind == Type::Real || sample.number == x;
    if (fits && std::none_of(result.begin(), result.end(), equal)) result.push_back(sample);
  }
  return result;
}

std::vector<Value> few(const Type& type) {
  std::vector<Value> all = samples(type);
  if (all.size() > 5) all.erase(all.begin() + 5, all.end());
  return all;
}

namespace {

template <class T>
std::string bytesOf(T x) {
  return {reinterpret_cast<const char*>(&x), sizeof x};
}
template <class T>
T heldIn(const std::string& bytes) {
  T x = 0;
  std::memcpy(&x, bytes.data(), std::min(sizeof x, bytes.size()));
  return x;
}

}  // namespace

std::string bytes(const Value& value) {
  const Type& type = *value.type;
  const auto size = static_cast<std::size_t>(type.bits / 8);
  if (type.kind == Type::Text) {
    std::string result;
    for (const char unit : value.text + '\0') result += unit + std::string(size - 1, 0);
    return result;
  }
  if (type.kind == Type::Real && size == 4) return bytesOf(static_cast<float>(value.number));
  if (type.kind == Type::Real) return bytesOf(static_cast<double>(value.number));
  const Number wrapped = converted(typeOf("ULINT"), {&typeOf("LINT"), value.number, {}})->number;
  return bytesOf(static_cast<std::uint64_t>(wrapped)).substr(0, size);
}

Value fromBytes(const Type& type, const std::string& bytes) {
  Value value{&type, 0, {}};
  const auto size = static_cast<std::size_t>(type.bits / 8);
  if (type.kind == Type::Text) {
    for (std::size_t i = 0; bytes[i] != 0; i += size) value.text += bytes[i];
  } else if (type.kind == Type::Real) {
    value.number = size == 4 ? Number{heldIn<float>(bytes)} : Number{heldIn<double>(bytes)};
  } else {
    value.number = static_cast<Number>(heldIn<std::uint64_t>(bytes));
    if (type.kind == Type::Signed && value.number > highest(type)) {
      value.number -= std::ldexp(Number{1}, type.bits);
    }
  }
  return value;
}

bool same(const Value& expected, const Value& actual, Number tolerance) {
  const Number e = expected.number;
  const Number a = actual.number;
  if (std::isnan(e) || std::isnan(a)) return std::isnan(e) && std::isnan(a);
  if (e == a && std::signbit(e) == std::signbit(a)) return expected.text == actual.text;
  return tolerance > 0 && std::fabs(a - e) <= tolerance * (e == 0 ? 1 : std::fabs(e));
}

std::string describe(const Value& value) {
  return value.type->name + '#' +
         (value.type->kind == Type::Text ? value.text : fmt::format("{:.20g}", value.number));
}

}  // namespace execution
