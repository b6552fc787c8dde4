// Literals of the language: one parser, which serves the grammar, values given on the
// command line, and source texts about which the plugin asks the host.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/basic_data_type.h"

namespace hostkit {

enum class LiteralForm : std::uint8_t {
  Bool,
  Integer,
  Real,
  Duration,
  Date,
  TimeOfDay,
  DateAndTime,
  String
};

struct LiteralValue {
  LiteralForm form = LiteralForm::Integer;
  vel::BasicDataType type = vel::BasicDataType::None;
  const char* typeName = "";    // static: "SINT", "BYTE", ...
  bool fixedType = false;       // typed literal (`INT#5`)
  bool negative = false;        // of an Integer
  std::uint64_t magnitude = 0;  // of a Bool (0 or 1) or an Integer
  double real = 0;
  // Duration: in the units of its type (TIME milliseconds, LTIME nanoseconds);
  // TimeOfDay: milliseconds since midnight; Date and DateAndTime: seconds since 1970-01-01.
  std::int64_t ticks = 0;
  // Real: sign and digits as C accepts them, without underscores; String: the decoded
  // characters, in UTF-8 for a WSTRING, as bytes for a STRING.
  std::string text;
};

enum class LiteralError : std::uint8_t {
  None,
  NotALiteral,  // does not begin as a literal does
  Malformed,    // begins as a literal, but its digits or units are wrong
  OutOfRange,   // its type cannot hold the value, or no type can
};

// Parses the whole of `text`, sign included. On failure `out` is unspecified.
LiteralError parseLiteral(std::string_view text, LiteralValue& out);

// True for the name of an elementary type or its abbreviation, as before the '#' of a literal.
bool namesLiteralType(std::string_view name);

// Parses an integer literal (based, typed, signed, with underscores) into sign and magnitude;
// false for any other text.
bool parseIntegerLiteral(std::string_view text, bool& negative, std::uint64_t& magnitude);

// True when the elementary type can hold the integer; always true for REAL and LREAL.
bool integerFits(bool negative, std::uint64_t magnitude, vel::BasicDataType type);

}  // namespace hostkit
