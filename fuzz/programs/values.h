// Types and values of random programs, and the arithmetic that is expected of them, in
// C++ numbers. Nothing here comes from the runtime or the reference host.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace generated {

// Holds every integer, sums of them, and modulo its width their products.
__extension__ typedef __int128 Wide;           // NOLINT(modernize-use-using): an extension
__extension__ typedef unsigned __int128 Bits;  // NOLINT(modernize-use-using)

struct Type {
  enum Kind {
    Bool,
    Signed,
    Unsigned,
    Real,
    Duration,
    Date,
    TimeOfDay,
    DateAndTime,
    Text,
    WideText
  };
  const char* name;
  Kind kind;
  int bits;  // of a value; of a code unit of a text

  bool integer() const { return kind == Signed || kind == Unsigned; }
  bool number() const { return integer() || kind == Real; }
  bool text() const { return kind == Text || kind == WideText; }
  // Differ in name only, as BYTE and USINT do.
  bool alike(const Type& other) const { return kind == other.kind && bits == other.bits; }
};

const std::vector<Type>& types();
// The first of its kind and width.
const Type& type(Type::Kind kind, int bits);

struct Value {
  const Type* type;
  Wide number = 0;     // of all but REAL, LREAL and texts
  double real = 0;     // a REAL is rounded to one
  std::string text{};  // ASCII
};

// What generated C leaves to its compiler, or what is not modelled here. A program that
// comes to it is no test.
struct Undefined : std::runtime_error {
  using std::runtime_error::runtime_error;
};

Value integer(const Type& type, Wide number);  // modulo the type's width
Value real(const Type& type, double number);
Value boolean(bool value);

// Every value of `part` is one of `whole`.
bool holds(const Type& whole, const Type& part);
// Where two numbers, or two durations, meet.
const Type& common(const Type& a, const Type& b);
// An assignment of `from` to `to` draws a warning at most.
bool assignable(const Type& to, const Type& from);

// As a cast does in C.
Value cast(const Type& to, const Value& value);
// The same, but that a TIME given to an LTIME is brought to nanoseconds.
Value converted(const Type& to, const Value& value);
// To the nearest integer, halves away from zero.
Value rounded(const Type& to, const Value& value);

// Below 0, 0, above 0; 2 with a NaN. Of two values of one type.
int order(const Value& a, const Value& b);

// The text of a value, and the value of a text.
std::string printed(const Value& value);
Value parsed(const Type& type, const std::string& text);

// What a variable of `size` bytes holds.
std::string bytes(const Value& value, std::size_t size);

}  // namespace generated
