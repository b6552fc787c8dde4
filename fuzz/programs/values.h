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

struct Part;
using Bounds = std::vector<std::pair<long, long>>;

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
    WideText,
    Enumeration,
    Pointer,
    Array,
    Structure,
    Block
  };
  std::string name;  // as a declaration writes it
  Kind kind;
  int bits = 0;                                       // of a value; of a code unit of a text
  int length = 80;                                    // of a text in characters
  std::string definition{};                           // in a TYPE; empty for none
  std::vector<std::pair<std::string, long>> names{};  // of the values of an enumeration
  const Type* element = nullptr;                      // of an array; what a pointer points to
  Bounds bounds{};                                    // of an array
  std::vector<Part> parts{};                          // of a structure, or the outputs of a block
  const struct Unit* block = nullptr;

  bool integer() const { return kind == Signed || kind == Unsigned; }
  bool number() const { return integer() || kind == Real; }
  bool text() const { return kind == Text || kind == WideText; }
  bool whole() const { return kind == Array || kind == Structure; }
  // Differ in name or length only, as BYTE and USINT do.
  bool alike(const Type& other) const {
    return kind < Enumeration ? kind == other.kind && bits == other.bits : this == &other;
  }
};

const std::vector<Type>& types();
// The first of its kind and width.
const Type& type(Type::Kind kind, int bits);

struct Value {
  const Type* type;
  Wide number = 0;     // of all that is no REAL, LREAL or text
  double real = 0;     // a REAL is rounded to one
  std::string text{};  // ASCII; the place of an array, a structure, or what a pointer points to
};

// Of all elements of an array in their order, as `[1,-2]`.
std::vector<std::string> subscripts(const Bounds& bounds);

// The value of a variable that is given none.
Value initialOf(const Type& type);

struct Part {
  std::string name;
  Value initial;  // of the part's type
};

// The elements of an array or the members of a structure, each with its name behind the whole's.
std::vector<Part> partsOf(const Type& type);

// What generated C leaves to its compiler, or what is not modelled here. A program that
// comes to it is no test.
struct Undefined : std::runtime_error {
  using std::runtime_error::runtime_error;
  const struct Statement* statement = nullptr;  // of the program
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
