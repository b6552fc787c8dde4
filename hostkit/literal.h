// Literals of the language: one parser for the grammar, for initial values given
// on the command line and for the texts that the host is asked about.
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
  bool fixedType = false;       // the source names the type (`INT#5`)
  bool negative = false;        // of an Integer
  std::uint64_t magnitude = 0;  // of a Bool (0 or 1) or an Integer
  double real = 0;
  // Of a Duration in the units of its type (TIME milliseconds, LTIME nanoseconds);
  // of a TimeOfDay milliseconds since midnight; of a Date or DateAndTime seconds
  // since 1970-01-01.
  std::int64_t ticks = 0;
  // Digits of a Real without underscores, sign included, as C accepts them; the
  // decoded characters of a String in UTF-8 (WSTRING) or as bytes (STRING).
  std::string text;
};

enum class LiteralError : std::uint8_t {
  None,
  NotALiteral,  // not the form of a literal at all
  Malformed,    // begins as one, but its digits or units are wrong
  OutOfRange,   // no type, or not the type named, holds the value
};

// Parses the whole of `text`, sign included. On failure `out` is unspecified.
LiteralError parseLiteral(std::string_view text, LiteralValue& out);

// The name stands in front of the '#' of literals: an elementary type, or short for one.
bool namesLiteralType(std::string_view name);

// The value of an integer literal (based, typed, signed, with underscores) in the
// same terms as LiteralValue; false for every other text.
bool parseIntegerLiteral(std::string_view text, bool& negative, std::uint64_t& magnitude);

// The integer fits the elementary type (integers by range, floats always).
bool integerFits(bool negative, std::uint64_t magnitude, vel::BasicDataType type);

}  // namespace hostkit
