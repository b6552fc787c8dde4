#include "fuzz/programs/operators.h"

#include <algorithm>
#include <cmath>

namespace generated {
namespace {

using Signature = std::function<Types(Random&, const Type&)>;
using Predicate = std::function<bool(const Type&)>;

Types none() { return {}; }

const Type& any(Random& random, const Predicate& wanted) {
  for (;;) {
    const Type& type = random.pick(types());
    if (wanted(type)) return type;
  }
}
bool isInteger(const Type& type) { return type.integer(); }
bool isCount(const Type& type) { return type.integer() && type.bits < 16; }
bool isNumber(const Type& type) { return type.number(); }
bool isValue(const Type& type) { return !type.text(); }

// `count` operands of the result's type, where it is one that is wanted.
Signature same(int count, const Predicate& wanted) {
  return [=](Random&, const Type& result) {
    return wanted(result) ? Types(static_cast<std::size_t>(count), &result) : none();
  };
}

// One operand that is wanted, for a result of which that is true.
Signature from(const Predicate& wanted, const Predicate& to) {
  return [=](Random& random, const Type& result) {
    return to(result) ? Types{&any(random, wanted)} : none();
  };
}

// Two operands of different types at times, for which `meet` gives the result's type.
template <typename Meet>
Types pair(Random& random, const Type& result, Meet meet) {
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
  if (result.kind == Type::Real) {
    return real(result, op == '+'   ? a.real + b.real
                        : op == '-' ? a.real - b.real
                        : op == '*' ? a.real * b.real
                                    : a.real / b.real);
  }
  const auto x = static_cast<Bits>(a.number);
  const auto y = static_cast<Bits>(b.number);
  if (op == '*') return integer(result, static_cast<Wide>(x * y));
  if (op == '/') return integer(result, b.number == 0 ? 0 : a.number / b.number);
  if (op == '%') return integer(result, b.number == 0 ? 0 : a.number % b.number);
  return integer(result, op == '+' ? a.number + b.number : a.number - b.number);
}

Operator number(const char* name, char op, int precedence) {
  const bool sum = op == '+' || op == '-';
  return {name, precedence,
          [=](Random& random, const Type& result) {
            const bool fits = result.integer() || (result.kind == Type::Real && op != '%') ||
                              (result.kind == Type::Duration && sum);
            return fits ? pair(random, result, common) : none();
          },
          [=](const Type& result, const Values& v) { return arithmetic(op, result, v); }};
}

Operator comparison(const char* name, int precedence, bool (*holdsFor)(int)) {
  return {name, precedence,
          [](Random& random, const Type& result) {
            if (result.kind != Type::Bool) return none();
            const Type& first = random.pick(types());
            if (!first.number() || random.chance(40)) return Types{&first, &first};
            return Types{&first, &any(random, isNumber)};
          },
          [=](const Type&, const Values& v) {
            const bool meet = v[0].type->number() || v[0].type->kind == Type::Duration;
            const Type& type = meet ? common(*v[0].type, *v[1].type) : *v[0].type;
            return boolean(holdsFor(order(converted(type, v[0]), converted(type, v[1]))));
          }};
}

Operator bitwise(const char* name, int precedence, Wide (*combine)(Wide, Wide)) {
  return {name, precedence,
          [](Random& random, const Type& result) {
            if (result.kind == Type::Bool) return Types{&result, &result};
            return result.integer() ? pair(random, result, common) : none();
          },
          [=](const Type& result, const Values& v) {
            return integer(result,
                           combine(converted(result, v[0]).number, converted(result, v[1]).number));
          }};
}

Operator numeric(const char* name, double (*function)(double)) {
  return {name, 0,
          [](Random& random, const Type& result) {
            if (result.kind != Type::Real) return none();
            const bool other = result.bits == 64 && random.chance(50);
            return Types{other ? &any(random, isInteger) : &result};
          },
          [=](const Type& result, const Values& v) {
            return real(result, function(cast(type(Type::Real, 64), v[0]).real));
          }};
}

// The base's type decides: a REAL gives a REAL, all else an LREAL.
Operator power(const char* name, int precedence) {
  return {name, precedence,
          [](Random& random, const Type& result) {
            if (result.kind != Type::Real) return none();
            const bool other = result.bits == 64 && random.chance(50);
            return Types{other ? &any(random, isInteger) : &result, &any(random, isNumber)};
          },
          [](const Type& result, const Values& v) {
            const Type& lreal = type(Type::Real, 64);
            return real(result, std::pow(cast(lreal, v[0]).real, cast(lreal, v[1]).real));
          }};
}

// As MIN, MAX and LIMIT compare; integers of which C would change the sign in the type of the
// result.
bool macroLess(const Type& result, const Values& all, const Value& a, const Value& b) {
  const auto any = [&](Type::Kind kind, int bits) {
    return std::any_of(all.begin(), all.end(), [&](const Value& each) {
      return each.type->kind == kind && each.type->bits >= bits;
    });
  };
  const bool integers = result.integer() && a.type->integer() && b.type->integer();
  if (integers && any(Type::Signed, 8) && any(Type::Unsigned, 32)) {
    return order(converted(result, a), converted(result, b)) == -1;
  }
  if (integers || !(a.type->number() || a.type->kind == Type::Duration)) return order(a, b) == -1;
  const Type& type = common(*a.type, *b.type);
  return order(converted(type, a), converted(type, b)) == -1;
}

const Type& nextSigned(const Type& type) {
  return type.kind == Type::Unsigned ? generated::type(Type::Signed, std::min(64, 2 * type.bits))
                                     : type;
}

// Which type MIN and MAX give two integers.
const Type& selected(const Type& a, const Type& b) {
  if (a.alike(b) || !a.integer() || !b.integer()) return holds(a, b) ? a : common(a, b);
  if (a.bits != b.bits) return nextSigned(a.bits > b.bits ? a : b);
  return nextSigned(b.kind == Type::Unsigned ? b : a);
}

Operator extreme(const char* name, bool least) {
  return {name, 0,
          [](Random& random, const Type& result) {
            if (result.number()) return pair(random, result, selected);
            return result.text() ? none() : Types{&result, &result};
          },
          [=](const Type& result, const Values& v) {
            return converted(result,
                             v[macroLess(result, v, v[least ? 0 : 1], v[least ? 1 : 0]) ? 0 : 1]);
          }};
}

Value limit(const Type& result, const Values& v) {
  const auto less = [&](std::size_t a, std::size_t b) { return macroLess(result, v, v[a], v[b]); };
  const bool ordered = !less(2, 0) && order(v[0], v[0]) == 0 && order(v[2], v[2]) == 0;
  if (!ordered) return converted(result, v[2]);
  return converted(result, less(1, 0) ? v[0] : less(2, 1) ? v[2] : v[1]);
}

// SINT, INT, ... LREAL: the last of the inputs' types is the result's.
Types multiplexed(Random& random, const Type& result) {
  if (result.text()) return {};
  Types inputs = {&any(random, isInteger)};
  const int count = 2 + random.below(3);
  const int full = random.below(count);
  for (int i = 0; i < count; ++i) {
    const bool same = i == full || !result.number() || random.chance(50);
    inputs.push_back(same ? &result : &any(random, [&](const Type& type) {
      const bool before =
          type.kind < result.kind || (type.kind == result.kind && type.bits <= result.bits);
      return type.number() && before;
    }));
  }
  return inputs;
}

Value shifted(const Type& result, const Values& v, bool left) {
  const Wide count = v[1].number;
  if (count < 0) return integer(result, 0);
  if (count >= result.bits) throw Undefined("a shift by the width or more");
  const Wide bits = v[0].number;
  if (!left) return integer(result, bits >> static_cast<int>(count));
  const int width = std::max(32, result.bits);
  const Wide moved = static_cast<Wide>(static_cast<Bits>(bits) << static_cast<int>(count));
  const bool overflows = bits < 0 || (result.bits < 64 ? moved >> (width - 1) : moved >> 63) != 0;
  if (result.kind == Type::Signed && overflows) throw Undefined("a signed shift that overflows");
  return integer(result, moved);
}

Value rotated(const Type& result, const Values& v, bool left) {
  const int width = result.bits;
  int count = static_cast<int>(v[1].number % width);
  if (count == 0 && width > 8) throw Undefined("a rotation by the width");
  if (!left) count = -count;
  count = (count + width) % width;
  const auto bits = static_cast<Bits>(v[0].number) & ((static_cast<Bits>(1) << width) - 1);
  return integer(result, static_cast<Wide>(bits << count | bits >> (width - count)));
}

Operator moving(const char* name, bool left, Value (*move)(const Type&, const Values&, bool)) {
  return {name, 0,
          [](Random& random, const Type& result) {
            return result.integer() ? Types{&result, &any(random, isInteger)} : none();
          },
          [=](const Type& result, const Values& v) { return move(result, v, left); },
          Operator::Shift};
}

Value negative(const Type& result, const Values& v) {
  if (result.kind == Type::Real) return real(result, -v[0].real);
  return integer(result, -v[0].number);
}

Value absolute(const Type& result, const Values& v) {
  if (result.kind == Type::Real) return real(result, std::fabs(v[0].real));
  const Wide magnitude = v[0].number < 0 ? -v[0].number : v[0].number;
  if (result.bits < 32 && integer(result, magnitude).number != magnitude) {
    throw Undefined("ABS of the lowest value, in the width that C has computed it in");
  }
  return integer(result, magnitude);
}

bool isBcd(const Type& type) { return type.integer() && type.bits <= 16; }
bool fits(const Type& type, Type::Kind kind, int bits) { return type.alike({"", kind, bits}); }

// A number that scales a duration.
Value scaled(const Type& result, const Values& v, bool divided) {
  const std::size_t at = v[0].type->kind == Type::Duration ? 0 : 1;
  const Value& factor = v[1 - at];
  if (factor.type->kind != Type::Real) {
    const Type& lint = type(Type::Signed, 64);
    const Value product = arithmetic(divided ? '/' : '*', lint, {cast(lint, v[at]), factor});
    return integer(result, product.number);
  }
  const auto ticks = static_cast<double>(v[at].number);
  const double x = divided ? ticks / factor.real : ticks * factor.real;
  if (std::isnan(x)) return integer(result, 0);
  const double limit = std::ldexp(1, result.bits - 1);
  const Wide highest = (Wide{1} << (result.bits - 1)) - 1;
  return integer(result, x >= limit ? highest : x <= -limit ? -highest - 1 : static_cast<Wide>(x));
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
            if (result.kind != Type::TimeOfDay && result.kind != Type::DateAndTime) return none();
            return Types{&result, &type(Type::Duration, random.chance(50) ? 32 : 64)};
          },
          [=](const Type& result, const Values& v) { return later(result, v, sign); }};
}

Value between(const Type& result, const Values& v) {
  const int unit = v[0].type->kind == Type::TimeOfDay ? 1 : 1000;
  return integer(result, (v[0].number - v[1].number) * unit);
}

// A conversion that a name of two types asks for; the operand may be smaller.
Value castTo(const Type& result, const Values& v) { return cast(result, v[0]); }
Value toInteger(const Type& result, const Values& v) { return rounded(result, v[0]); }
Value toBool(const Type&, const Values& v) {
  const bool none = v[0].type->kind == Type::Real ? v[0].real == 0 : v[0].number == 0;
  return boolean(!none);
}
bool isReal(const Type& type) { return type.kind == Type::Real; }
bool isBool(const Type& type) { return type.kind == Type::Bool; }
bool isPlain(const Type& type) { return !type.text() && type.kind != Type::Bool; }

std::vector<Operator> conversions() {
  const auto toText = [](const Type& result, const Values& v) {
    return Value{&result, 0, 0, printed(v[0])};
  };
  const auto isText = [](const Type& type) { return type.text(); };
  const auto isWhole = [](const Type& type) { return isPlain(type) && !isReal(type); };
  const auto notReal = [](const Type& type) { return !type.text() && !isReal(type); };
  return {{"$0_TO_$r", 0, from(notReal, isPlain), castTo},
          {"$0_TO_$r", 0, from(isReal, isReal), castTo},
          {"$0_TO_$r", 0, from(isReal, isWhole), toInteger, Operator::Small},
          {"$0_TO_BOOL", 0, from(isPlain, isBool), toBool},
          {"TO_BOOL", 0, from(isValue, isBool), toBool},
          {"TO_$r", 0, from(notReal, isPlain), castTo},
          {"TO_$r", 0, from(isReal, isReal), castTo},
          {"TO_$r", 0, from(isReal, isInteger), toInteger, Operator::Small},
          {"TO_$r", 0,
           from(isReal, [](const Type& t) { return t.kind >= Type::Duration && isPlain(t); }),
           castTo, Operator::Small},
          {"TRUNC", 0, from(isNumber, [](const Type& t) { return fits(t, Type::Signed, 32); }),
           castTo, Operator::Small},
          {"$0_TO_$r", 0, from(isValue, isText), toText},
          {"TO_$r", 0, from(isValue, isText), toText},
          {"$0_TO_$r", 0,
           from(isText, [](const Type& t) { return isValue(t) && !fits(t, Type::Duration, 64); }),
           [](const Type& result, const Values& v) { return parsed(result, v[0].text); }},
          {"BCD_TO_INT", 0,
           from([](const Type& t) { return fits(t, Type::Unsigned, 8); },
                [](const Type& t) { return fits(t, Type::Signed, 16); }),
           [](const Type& result, const Values& v) {
             const auto digit = [&](int d) { return d > 9 ? 0 : d; };
             const int bits = static_cast<int>(v[0].number);
             return integer(result, digit(bits / 16) * 10 + digit(bits % 16));
           }},
          {"INT_TO_BCD", 0, from(isBcd, [](const Type& t) { return fits(t, Type::Unsigned, 8); }),
           [](const Type& result, const Values& v) {
             const Wide n = std::clamp<Wide>(v[0].number, 0, 99);
             return integer(result, n / 10 * 16 + n % 10);
           }},
          {"SIZEOF", 0,
           from([](const Type& t) { return isValue(t); },
                [](const Type& t) { return fits(t, Type::Unsigned, 32); }),
           [](const Type& result, const Values& v) {
             return integer(result, (v[0].type->bits + 7) / 8);
           },
           Operator::Name}};
}

// Positions count from 1. `v` is a text, the number of characters and the position.
std::string piece(const std::string& text, Wide from, Wide length) {
  const Wide size = static_cast<Wide>(text.size());
  const Wide start = std::clamp<Wide>(from, 0, size);
  return text.substr(static_cast<std::size_t>(start),
                     static_cast<std::size_t>(std::clamp<Wide>(length, 0, size - start)));
}
bool has(const Value& text, Wide position) {
  return position >= 1 && position <= static_cast<Wide>(text.text.size());
}
std::string replacement(const Value& in, const std::string& by, Wide length, Wide position) {
  if (!has(in, position)) return in.text;
  return piece(in.text, 0, position - 1) + by +
         piece(in.text, position - 1 + std::max<Wide>(length, 0), 1 << 20);
}

// `texts` texts and then `numbers` integers give a text.
Operator textual(const char* name, int texts, int numbers, std::string (*compute)(const Values&)) {
  return {
      name, 0,
      [=](Random& random, const Type& result) {
        if (!result.text()) return none();
        Types operands(static_cast<std::size_t>(texts), &result);
        for (int i = 0; i < numbers; ++i) {
          operands.push_back(random.chance(80) ? &type(Type::Signed, 16) : &any(random, isCount));
        }
        return operands;
      },
      [=](const Type& result, const Values& v) {
        return Value{&result, 0, 0, compute(v)};
      },
      Operator::Position};
}

std::vector<Operator> textFunctions() {
  const auto toInt = [](const Type& t) { return fits(t, Type::Signed, 16); };
  const auto length = [](const Value& v) { return static_cast<Wide>(v.text.size()); };
  return {
      {"LEN", 0, from([](const Type& t) { return t.text(); }, toInt),
       [=](const Type& result, const Values& v) { return integer(result, length(v[0])); }},
      {"FIND", 0,
       [=](Random& random, const Type& result) {
         const Type& type = any(random, [](const Type& t) { return t.text(); });
         return toInt(result) ? Types{&type, &type} : none();
       },
       [](const Type& result, const Values& v) {
         const std::size_t at = v[0].text.find(v[1].text);
         const bool found = at != std::string::npos && !v[1].text.empty();
         return integer(result, found ? static_cast<Wide>(at) + 1 : 0);
       }},
      textual("LEFT", 1, 1, [](const Values& v) { return piece(v[0].text, 0, v[1].number); }),
      textual("RIGHT", 1, 1,
              [](const Values& v) {
                const Wide size = static_cast<Wide>(v[0].text.size());
                return piece(v[0].text, size - std::max<Wide>(v[1].number, 0), size);
              }),
      textual("MID", 1, 2,
              [](const Values& v) {
                return has(v[0], v[2].number) ? piece(v[0].text, v[2].number - 1, v[1].number) : "";
              }),
      textual("CONCAT", 2, 0, [](const Values& v) { return v[0].text + v[1].text; }),
      textual("CONCAT", 3, 0, [](const Values& v) { return v[0].text + v[1].text + v[2].text; }),
      textual("INSERT", 2, 1,
              [](const Values& v) {
                const Wide at = v[2].number;
                if (at == 0) return v[1].text + v[0].text;
                return has(v[0], at)
                           ? piece(v[0].text, 0, at) + v[1].text + piece(v[0].text, at, 1 << 20)
                           : v[0].text;
              }),
      textual("DELETE", 1, 2,
              [](const Values& v) { return replacement(v[0], "", v[1].number, v[2].number); }),
      textual("REPLACE", 2, 2, [](const Values& v) {
        return replacement(v[0], v[1].text, v[2].number, v[3].number);
      })};
}

std::vector<Operator> all() {
  const auto complemented = [](const Type& type) { return type.integer() || isBool(type); };
  const Signature negated = [](Random& random, const Type& result) {
    if (!isNumber(result) && result.kind != Type::Duration) return none();
    if (result.kind == Type::Signed && result.bits > 8 && random.chance(50)) {
      return Types{&type(Type::Unsigned, result.bits / 2)};
    }
    return result.kind == Type::Unsigned ? none() : Types{&result};
  };
  const Signature duration = [](Random& random, const Type& result) {
    return result.kind == Type::Duration ? Types{&result, &any(random, isNumber)} : none();
  };
  const Signature reversed = [](Random& random, const Type& result) {
    return result.kind == Type::Duration ? Types{&any(random, isNumber), &result} : none();
  };
  const Signature difference = [](Random& random, const Type& result) {
    const Type& point =
        any(random, [](const Type& t) { return t.kind >= Type::Date && !t.text(); });
    return fits(result, Type::Duration, 32) ? Types{&point, &point} : none();
  };
  const auto scale = [](const Type& r, const Values& v) { return scaled(r, v, false); };
  const auto divide = [](const Type& r, const Values& v) { return scaled(r, v, true); };
  std::vector<Operator> rows = {
      number("+", '+', 6),
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
      {"-", 9, negated, negative, Operator::Computed},
      {"*", 7, duration, scale},
      {"*", 7, reversed, scale},
      {"/", 7, duration, divide},
      clock("+", 1),
      clock("-", -1),
      {"-", 6, difference, between},
      {"ABS", 0, same(1, isNumber), absolute, Operator::Computed},
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
      extreme("MIN", true),
      extreme("MAX", false),
      {"LIMIT", 0, same(3, isValue), limit},
      {"SEL", 0,
       [](Random&, const Type& result) {
         return Types{&type(Type::Bool, 1), &result, &result};
       },
       [](const Type& result, const Values& v) {
         return converted(result, v[v[0].number != 0 ? 2 : 1]);
       },
       Operator::Name},
      {"MUX", 0, multiplexed,
       [](const Type& result, const Values& v) {
         const Wide last = static_cast<Wide>(v.size()) - 2;
         return converted(result,
                          v[static_cast<std::size_t>(1 + std::clamp<Wide>(v[0].number, 0, last))]);
       }},
      {"MOVE", 0, same(1, [](const Type&) { return true; }),
       [](const Type& result, const Values& v) { return converted(result, v[0]); }},
      moving("SHL", true, shifted),
      moving("SHR", false, shifted),
      moving("ROL", true, rotated),
      moving("ROR", false, rotated)};
  for (const std::vector<Operator>& more : {conversions(), textFunctions()}) {
    rows.insert(rows.end(), more.begin(), more.end());
  }
  return rows;
}

}  // namespace

std::string nameOf(const Operator& op, const Type& first, const Type& result) {
  std::string name = op.name;
  for (const auto& [mark, type] : {std::pair("$0", &first), {"$r", &result}}) {
    const std::size_t at = name.find(mark);
    if (at != std::string::npos) name.replace(at, 2, type->name);
  }
  return name;
}

const std::vector<Operator>& operators() {
  static const std::vector<Operator> rows = all();
  return rows;
}

}  // namespace generated
