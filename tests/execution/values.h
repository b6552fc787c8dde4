// Values of elementary types, and the arithmetic that the tests expect of generated
// programs, done without the runtime.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace execution {

// Exact for every value of every type.
using Number = long double;
static_assert(__LDBL_MANT_DIG__ >= 64, "a number holds every LINT and ULINT");

struct Type {
  enum Kind { Bool, Signed, Unsigned, Real, Text };
  std::string name;
  Kind kind;
  int bits;            // of a value; of a code unit for a text
  bool clock = false;  // a duration, a date or a time of day

  // Integers and bit strings.
  bool isInteger() const { return (kind == Signed || kind == Unsigned) && !clock; }
  bool isBitString() const { return name == "BYTE" || name.find("WORD") != std::string::npos; }
  bool isNumber() const { return isInteger() || kind == Real; }
};

const std::vector<Type>& types();
// The type of that name; there is one.
const Type& typeOf(const std::string& name);

struct Value {
  const Type* type;
  Number number = 0;  // of all but texts
  std::string text;   // ASCII
};

Value value(const std::string& type, Number number);
Value text(const std::string& type, const std::string& units);

// Of a type that is no real.
Number lowest(const Type& type);
Number highest(const Type& type);

// `source` as C casts it to a number type or, compared with zero, to BOOL. Narrowing to a
// signed type is the compiler's choice in C; gcc and clang both document modulo 2 to the
// power of the width. None for a real whose whole part the target does not hold, which has
// no result in C.
std::optional<Value> converted(const Type& target, const Value& source);

// Limits of all widths and their neighbours, rounding halves, and what is no finite number,
// as far as the type has them.
std::vector<Value> samples(const Type& type);

// The first of the samples: 0, 1, -1 and the ends; of reals NaN, infinities and halves.
std::vector<Value> few(const Type& type);

// What a variable of the type holds; of a text as much as it needs.
std::string bytes(const Value& value);
Value fromBytes(const Type& type, const std::string& bytes);

// Texts and integers are equal; reals lie within that part of the expected one, and one that
// is 0 within it. Infinities and the signs of zeros count, what a NaN holds does not.
bool same(const Value& expected, const Value& actual, Number tolerance);
std::string describe(const Value& value);

}  // namespace execution
