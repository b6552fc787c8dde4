// What a host knows of an operator beside what the operator itself checks and writes: one row
// for each operator or pattern of names.
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
  Other,  // of add-ons
};
const char* familyName(OperatorFamily family);

struct OperatorTraits {
  // What the result has to do with the operands.
  enum class Result : std::uint8_t {
    Computed,    // of their values
    Chosen,      // one of them as it stands, from `firstChoice` on
    Passed,      // the first as it stands
    Located,     // of where they lie or how large they are, whatever their values
    Converted,   // the first, of whatever type, as another type
    ComparedTo0  // whether the first, of whatever type, is not 0
  };
  static constexpr std::size_t kMostInputs = 3;

  std::string_view names;  // the operator's, or a pattern in which "*" stands for some characters
  OperatorFamily family = OperatorFamily::Other;
  // By name, in the order of the parameters. The last one of an extensible operator ends in the
  // number of the first of its kind, after which others may follow.
  std::array<std::string_view, kMostInputs> inputs = {{"IN", {}, {}}};
  Result result = Result::Computed;
  std::uint8_t firstChoice = 0;
  // Number of leading operands that may be names of other things than values.
  std::uint8_t namedOperands = 0;
  std::uint16_t marks = 0;

  enum Mark : std::uint16_t {
    kExtensible = 1,          // takes any number of inputs
    kCompares = 2,            // compares the operands that it chooses among, in C
    kCastsOperands = 4,       // to the type of the result, in C
    kWritesOperandsBare = 8,  // beside casts or operators, without parentheses of its own
    kRemembers = 16,          // its operand, in a hidden variable, from one scan to the next
    kReadsDevices = 32,       // so that the same call may give another value
    kGivesNoValue = 64,       // is a statement in C
    kGivesAddress = 128,      // of its operand
    kGivesSize = 256,         // a size_t of C
    kTakesLTime = 512,        // its operand is an LTIME; a TIME must be made one
    kGivesText = 1024,        // of the elementary type of its operand
  };
  constexpr bool has(Mark mark) const { return (marks & mark) != 0; }

  bool chooses() const { return result == Result::Chosen; }
  bool givesValue() const { return !has(kGivesNoValue); }
  // Makes a call worth what it reads or remembers, not only what it is given.
  bool countsCalls() const { return has(kRemembers) || has(kReadsDevices); }
  // Its operands reach the result, or are not computed with at all: a pointer stays one.
  bool keepsPointers() const {
    return chooses() || result == Result::Passed || result == Result::Located;
  }
  // The position of the input `formal` among the parameters, -1 when there is none.
  int position(std::string_view formal) const;
  // Number of inputs; the least of an extensible operator.
  int inputCount() const;
};

// The row of an operator, in any letter case; for names that no operator of the plugin bears,
// the row of an operator of which nothing is known.
const OperatorTraits& operatorTraits(std::string_view name);

// `IN3` is 3; -1 for a text that is not the prefix and a number.
int numberedInput(std::string_view formal, std::string_view prefix);

}  // namespace hostkit
