#include "fuzz/programs/operators.h"

#include <algorithm>
#include <cmath>

#include "fuzz/programs/signatures.h"

namespace generated {
namespace {

Operator number(const char* name, char op, int precedence) {
  const bool sum = op == '+' || op == '-';
  return {name, precedence,
          [=](Random& random, const Type& result) {
            const bool fits = result.integer() || (isReal(result) && op != '%') ||
                              (result.kind == Type::Duration && sum);
            return fits ? pair(random, result, common) : Types();
          },
          [=](const Type& result, const Values& v) { return arithmetic(op, result, v); }};
}

Operator comparison(const char* name, int precedence, bool (*holdsFor)(int)) {
  return {name, precedence,
          [](Random& random, const Type& result) {
            if (!isBool(result)) return Types();
            const Type& first = random.pick(types());
            if (!first.number() || random.chance(40)) return Types{&first, &first};
            return Types{&first, &any(random, &Type::number)};
          },
          [=](const Type&, const Values& v) { return boolean(holdsFor(compared(v[0], v[1]))); }};
}

Operator bitwise(const char* name, int precedence, Wide (*combine)(Wide, Wide)) {
  return {name, precedence,
          [](Random& random, const Type& result) {
            if (isBool(result)) return Types{&result, &result};
            return result.integer() ? pair(random, result, common) : Types();
          },
          [=](const Type& result, const Values& v) {
            return integer(result,
                           combine(converted(result, v[0]).number, converted(result, v[1]).number));
          }};
}

double lreal(const Value& value) { return cast(type(Type::Real, 64), value).real; }

// A REAL gives a REAL, all else an LREAL.
Types measured(Random& random, const Type& result) {
  if (!isReal(result)) return {};
  const bool other = result.bits == 64 && random.chance(50);
  return {other ? &any(random, &Type::integer) : &result};
}

Operator numeric(const char* name, double (*function)(double)) {
  return {name, 0, measured,
          [=](const Type& result, const Values& v) { return real(result, function(lreal(v[0]))); }};
}

// The base's type decides.
Operator power(const char* name, int precedence) {
  return {name, precedence,
          [](Random& random, const Type& result) {
            Types operands = measured(random, result);
            if (!operands.empty()) operands.push_back(&any(random, &Type::number));
            return operands;
          },
          [](const Type& result, const Values& v) {
            return real(result, std::pow(lreal(v[0]), lreal(v[1])));
          }};
}

Value shifted(const Type& result, const Values& v, bool left) {
  const Wide count = v[1].number;
  if (count < 0) return integer(result, 0);
  if (count >= result.bits) throw Undefined("a shift by the width or more");
  const Wide bits = v[0].number;
  if (!left) return integer(result, bits >> static_cast<int>(count));
  const Wide moved = static_cast<Wide>(static_cast<Bits>(bits) << static_cast<int>(count));
  const bool overflows = bits < 0 || moved >> (std::max(32, result.bits) - 1) != 0;
  if (result.kind == Type::Signed && overflows) throw Undefined("a signed shift that overflows");
  return integer(result, moved);
}

Value rotated(const Type& result, const Values& v, bool left) {
  const int width = result.bits;
  const int turn = static_cast<int>(v[1].number % width);
  if (turn == 0 && width > 8) throw Undefined("a rotation by the width");
  const int count = (width + (left ? turn : -turn)) % width;
  const auto bits = static_cast<Bits>(v[0].number) & ((static_cast<Bits>(1) << width) - 1);
  return integer(result, static_cast<Wide>(bits << count | bits >> (width - count)));
}

Operator moving(const char* name, bool left, Value (*move)(const Type&, const Values&, bool)) {
  return {name, 0,
          [](Random& random, const Type& result) {
            return result.integer() ? Types{&result, &any(random, &Type::integer)} : Types();
          },
          [=](const Type& result, const Values& v) { return move(result, v, left); },
          Operator::Shift};
}

Types negated(Random& random, const Type& result) {
  if (result.kind == Type::Signed && result.bits > 8 && random.chance(50)) {
    return {&type(Type::Unsigned, result.bits / 2)};
  }
  const bool fits = result.kind == Type::Signed || isReal(result) || result.kind == Type::Duration;
  return fits ? Types{&result} : Types();
}

Value negative(const Type& result, const Values& v) {
  return isReal(result) ? real(result, -v[0].real) : integer(result, -v[0].number);
}

Value absolute(const Type& result, const Values& v) {
  if (isReal(result)) return real(result, std::fabs(v[0].real));
  const Wide magnitude = v[0].number < 0 ? -v[0].number : v[0].number;
  if (result.bits < 32 && integer(result, magnitude).number != magnitude) {
    throw Undefined("ABS of the lowest value, in the width that C has computed it in");
  }
  return integer(result, magnitude);
}

}  // namespace

const Type& any(Random& random, const Predicate& wanted) {
  for (;;) {
    const Type& type = random.pick(types());
    if (wanted(type)) return type;
  }
}

Predicate is(Type::Kind kind, int bits) {
  return [=](const Type& type) { return type.alike({"", kind, bits}); };
}
bool isBool(const Type& type) { return type.kind == Type::Bool; }
bool isReal(const Type& type) { return type.kind == Type::Real; }
bool notText(const Type& type) { return !type.text(); }

Signature same(int count, const Predicate& wanted) {
  return [=](Random&, const Type& result) {
    return wanted(result) ? Types(static_cast<std::size_t>(count), &result) : Types();
  };
}

Signature from(const Predicate& wanted, const Predicate& to) {
  return [=](Random& random, const Type& result) {
    return to(result) ? Types{&any(random, wanted)} : Types();
  };
}

Types pair(Random& random, const Type& result, const Type& (*meet)(const Type&, const Type&)) {
  for (int tries = 0; tries < 12 && random.chance(60); ++tries) {
    const Type& a = random.pick(types());
    const Type& b = random.pick(types());
    const bool meeting = a.number() ? b.number() : a.kind == Type::Duration && b.kind == a.kind;
    if (meeting && meet(a, b).alike(result)) return {&a, &b};
  }
  return {&result, &result};
}

Value arithmetic(char op, const Type& result, const Values& operands) {
  const Value a = converted(result, operands[0]);
  const Value b = converted(result, operands[1]);
  if (isReal(result)) {
    return real(result, op == '+'   ? a.real + b.real
                        : op == '-' ? a.real - b.real
                        : op == '*' ? a.real * b.real
                                    : a.real / b.real);
  }
  const Bits product = static_cast<Bits>(a.number) * static_cast<Bits>(b.number);
  if (op == '*') return integer(result, static_cast<Wide>(product));
  if (op == '/') return integer(result, b.number == 0 ? 0 : a.number / b.number);
  if (op == '%') return integer(result, b.number == 0 ? 0 : a.number % b.number);
  return integer(result, op == '+' ? a.number + b.number : a.number - b.number);
}

int compared(const Value& a, const Value& b) {
  if (!a.type->number() && a.type->kind != Type::Duration) return order(a, b);
  const Type& type = common(*a.type, *b.type);
  return order(converted(type, a), converted(type, b));
}

std::vector<Operator> infixes() {
  const auto complemented = [](const Type& type) { return type.integer() || isBool(type); };
  return {number("+", '+', 6),
          number("-", '-', 6),
          number("*", '*', 7),
          number("/", '/', 7),
          number("MOD", '%', 7),
          power("**", 8),
          power("EXPT", 0),
          comparison("=", 4, [](int o) { return o == 0; }),
          comparison("<>", 4, [](int o) { return o != 0; }),
          comparison("<", 5, [](int o) { return o < 0; }),
          comparison(">", 5, [](int o) { return o == 1; }),
          comparison("<=", 5, [](int o) { return o <= 0; }),
          comparison(">=", 5, [](int o) { return o == 0 || o == 1; }),
          bitwise("AND", 3, [](Wide a, Wide b) { return a & b; }),
          bitwise("XOR", 2, [](Wide a, Wide b) { return a ^ b; }),
          bitwise("OR", 1, [](Wide a, Wide b) { return a | b; }),
          {"NOT", 9, same(1, complemented),
           [](const Type& result, const Values& v) { return integer(result, ~v[0].number); },
           Operator::Computed},
          {"-", 9, negated, negative, Operator::Computed}};
}

std::vector<Operator> numericFunctions() {
  return {
      {"ABS", 0, same(1, &Type::number), absolute, Operator::Computed},
      numeric("SQRT", std::sqrt),
      numeric("LN", std::log),
      numeric("LOG", std::log10),
      numeric("EXP", std::exp),
      numeric("SIN", std::sin),
      numeric("COS", std::cos),
      numeric("TAN", std::tan),
      numeric("ASIN", std::asin),
      numeric("ACOS", std::acos),
      numeric("ATAN", std::atan),
  };
}

std::vector<Operator> shifts() {
  return {moving("SHL", true, shifted), moving("SHR", false, shifted), moving("ROL", true, rotated),
          moving("ROR", false, rotated)};
}

std::string nameOf(const Operator& op, const Type& first, const Type& result) {
  std::string name = op.name;
  for (const auto& [mark, type] : {std::pair("$0", &first), {"$r", &result}}) {
    const std::size_t at = name.find(mark);
    if (at != std::string::npos) name.replace(at, 2, type->name);
  }
  return name;
}

const std::vector<Operator>& operators() {
  static const std::vector<Operator> all = [] {
    std::vector<Operator> rows;
    for (const auto& family :
         {infixes, durations, numericFunctions, selections, shifts, conversions, textFunctions}) {
      const std::vector<Operator> more = family();
      rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
  }();
  return all;
}

}  // namespace generated
