// Operators of durations, and of times with them.
#include <cmath>

#include "fuzz/programs/signatures.h"

namespace generated {
namespace {

// A number that scales a duration.
Value scaled(char op, const Type& result, const Values& v) {
  const std::size_t at = v[0].type->kind == Type::Duration ? 0 : 1;
  const Value& factor = v[1 - at];
  if (!isReal(*factor.type)) {
    const Type& lint = type(Type::Signed, 64);
    return integer(result, arithmetic(op, lint, {cast(lint, v[at]), factor}).number);
  }
  const auto ticks = static_cast<double>(v[at].number);
  const double x = op == '/' ? ticks / factor.real : ticks * factor.real;
  if (std::isnan(x)) return integer(result, 0);
  const double limit = std::ldexp(1, result.bits - 1);
  const Wide highest = (Wide{1} << (result.bits - 1)) - 1;
  return integer(result, x >= limit ? highest : x <= -limit ? -highest - 1 : static_cast<Wide>(x));
}

Operator scaling(const char* name, bool reversed) {
  return {name, 7,
          [=](Random& random, const Type& result) {
            if (result.kind != Type::Duration) return Types();
            const Type& factor = any(random, &Type::number);
            return reversed ? Types{&factor, &result} : Types{&result, &factor};
          },
          [=](const Type& result, const Values& v) { return scaled(*name, result, v); }};
}

// A time of day goes round the clock; a duration is cut to the other's unit.
Value later(const Type& result, const Values& v, int sign) {
  const Wide milliseconds = v[1].type->bits == 32 ? v[1].number : v[1].number / 1000000;
  if (result.kind == Type::DateAndTime) {
    return integer(result, v[0].number + sign * (milliseconds / 1000));
  }
  constexpr int kDay = 86400000;
  const Wide moved = (v[0].number + sign * milliseconds % kDay) % kDay;
  return integer(result, moved < 0 ? moved + kDay : moved);
}

Operator clock(const char* name, int sign) {
  return {name, 6,
          [](Random& random, const Type& result) {
            if (result.kind != Type::TimeOfDay && result.kind != Type::DateAndTime) return Types();
            return Types{&result, &type(Type::Duration, random.chance(50) ? 32 : 64)};
          },
          [=](const Type& result, const Values& v) { return later(result, v, sign); }};
}

Types points(Random& random, const Type& result) {
  const Type& point = any(random, [](const Type& t) { return t.kind >= Type::Date && notText(t); });
  return result.alike(type(Type::Duration, 32)) ? Types{&point, &point} : Types();
}

Value between(const Type& result, const Values& v) {
  const int unit = v[0].type->kind == Type::TimeOfDay ? 1 : 1000;
  return integer(result, (v[0].number - v[1].number) * unit);
}

}  // namespace

std::vector<Operator> durations() {
  return {scaling("*", false), scaling("*", true), scaling("/", false),
          clock("+", 1),       clock("-", -1),     {"-", 6, points, between}};
}

}  // namespace generated
