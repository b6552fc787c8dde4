// Properties of operators that a host needs besides `check` and `generate`: one row for each
// operator or pattern of names.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace hostkit {

enum class OperatorFamily : std::uint8_t {
  Conversion,
  GenericConversion,
  Truncation,
  StringConversion,
  BcdConversion,
  Selection,
  Shift,
  Rotation,
  Edge,
  Assignment,
  Numeric,
  Reference,
  DirectIo,
  Zone,
  BitOfParameter,
  Other,  // operators of add-ons
};
const char* familyName(OperatorFamily family);

struct OperatorTraits {
  // How the result depends on the operands.
  enum class Result : std::uint8_t {
    Computed,    // computed from their values
    Chosen,      // one of the operands from `firstChoice` on, unchanged
    Passed,      // the first operand, unchanged
    Located,     // depends on their addresses or sizes only
    Converted,   // the first operand, of any type, converted to another type
    ComparedTo0  // whether the first operand, of any type, is not 0
  };
  static constexpr std::size_t kMostInputs = 3;

  std::string_view names;  // a name, or a pattern in which "*" matches any characters
  OperatorFamily family = OperatorFamily::Other;
  // Names in the order of the parameters. In an extensible operator the last name ends in a
  // number (`IN0`), from which the names of further inputs count on (`IN1`, `IN2`).
  std::array<std::string_view, kMostInputs> inputs = {{"IN", {}, {}}};
  Result result = Result::Computed;
  std::uint8_t firstChoice = 0;
  // Number of leading operands that may be names of something without a value, such as a type.
  std::uint8_t namedOperands = 0;
  std::uint16_t marks = 0;

  enum Mark : std::uint16_t {
    kExtensible = 1,          // takes any number of inputs
    kCompares = 2,            // its C compares the operands from which it selects
    kCastsOperands = 4,       // its C casts the operands to the type of the result
    kWritesOperandsBare = 8,  // its C has operands next to casts or operators, unparenthesized
    kRemembers = 16,          // stores its operand in a hidden variable until the next scan
    kReadsDevices = 32,       // reads devices, so that equal calls may give different values
    kGivesNoValue = 64,       // is a statement in C
    kGivesAddress = 128,      // gives the address of its operand
    kGivesSize = 256,         // gives a size_t of C
    kTakesLTime = 512,        // its operand is an LTIME, to which a TIME must be converted
    kGivesText = 1024,        // formats a value of the elementary type of its operand
    kRepeatsOperands = 2048,  // its C evaluates operands more than once
    kRepeatsReals = 4096,     // the same, but only of a floating-point type
    kNeedsCapitals = 8192,  // its C is that of another operator unless the call has it in capitals
    kShiftsLeft = 16384,    // its C shifts the first operand to the left
  };
  constexpr bool has(Mark mark) const { return (marks & mark) != 0; }

  bool chooses() const { return result == Result::Chosen; }
  // True if its C gives one of several operands as it is, so that the host must convert them.
  bool selects() const { return chooses() && !has(kCompares) && !has(kCastsOperands); }
  bool givesValue() const { return !has(kGivesNoValue); }
  // True when the value of a call depends on more than its operands.
  bool countsCalls() const { return has(kRemembers) || has(kReadsDevices); }
  // True when the operator does not compute with its operands, so that a pointer stays one.
  bool keepsPointers() const {
    return chooses() || result == Result::Passed || result == Result::Located;
  }
  // The position of the input `formal` among the parameters; -1 when there is none.
  int position(std::string_view formal) const;
  // Number of inputs; of an extensible operator, of the required ones.
  int inputCount() const;
};

// The row of an operator, regardless of letter case. A name that is no operator of the plugin has
// the row of add-ons, whose C may evaluate operands more than once.
const OperatorTraits& operatorTraits(std::string_view name);

// The number after the prefix: 3 for `IN3`. -1 unless `formal` is the prefix and a number.
int numberedInput(std::string_view formal, std::string_view prefix);

}  // namespace hostkit
