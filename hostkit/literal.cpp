#include "hostkit/literal.h"

#include <charconv>
#include <system_error>

#include "hostkit/literal_parts.h"

namespace hostkit {

LiteralError literal::takeDigits(std::string_view& text, unsigned base, std::uint64_t& value) {
  value = 0;
  bool overflow = false;
  bool afterDigit = false;
  while (!text.empty()) {
    const char c = toLower(text.front());
    if (c == '_') {
      if (!afterDigit) return LiteralError::Malformed;
      afterDigit = false;
    } else {
      const unsigned digit = isDigit(c)             ? static_cast<unsigned>(c - '0')
                             : c >= 'a' && c <= 'f' ? static_cast<unsigned>(c - 'a') + 10U
                                                    : base;
      if (digit >= base) break;
      overflow |= __builtin_mul_overflow(value, std::uint64_t{base}, &value);
      overflow |= __builtin_add_overflow(value, std::uint64_t{digit}, &value);
      afterDigit = true;
    }
    text.remove_prefix(1);
  }
  if (!afterDigit) return LiteralError::Malformed;
  return overflow ? LiteralError::OutOfRange : LiteralError::None;
}

namespace {

using literal::isDigit;
using literal::takeDigits;
using literal::takeIf;
using vel::BasicDataType;

struct NamedType {
  std::string_view prefix;  // in front of the '#'
  LiteralForm form;
  BasicDataType type;
  const char* typeName;
};

constexpr NamedType kLiteralTypes[] = {
    {"SINT", LiteralForm::Integer, BasicDataType::SInt, "SINT"},
    {"INT", LiteralForm::Integer, BasicDataType::Int, "INT"},
    {"DINT", LiteralForm::Integer, BasicDataType::DInt, "DINT"},
    {"LINT", LiteralForm::Integer, BasicDataType::LInt, "LINT"},
    {"USINT", LiteralForm::Integer, BasicDataType::USInt, "USINT"},
    {"UINT", LiteralForm::Integer, BasicDataType::UInt, "UINT"},
    {"UDINT", LiteralForm::Integer, BasicDataType::UDInt, "UDINT"},
    {"ULINT", LiteralForm::Integer, BasicDataType::ULInt, "ULINT"},
    {"BYTE", LiteralForm::Integer, BasicDataType::USInt, "BYTE"},
    {"WORD", LiteralForm::Integer, BasicDataType::UInt, "WORD"},
    {"DWORD", LiteralForm::Integer, BasicDataType::UDInt, "DWORD"},
    {"LWORD", LiteralForm::Integer, BasicDataType::ULInt, "LWORD"},
    {"BOOL", LiteralForm::Bool, BasicDataType::Bool, "BOOL"},
    {"REAL", LiteralForm::Real, BasicDataType::Real, "REAL"},
    {"LREAL", LiteralForm::Real, BasicDataType::LReal, "LREAL"},
    {"T", LiteralForm::Duration, BasicDataType::Time, "TIME"},
    {"TIME", LiteralForm::Duration, BasicDataType::Time, "TIME"},
    {"LT", LiteralForm::Duration, BasicDataType::LTime, "LTIME"},
    {"LTIME", LiteralForm::Duration, BasicDataType::LTime, "LTIME"},
    {"D", LiteralForm::Date, BasicDataType::Date, "DATE"},
    {"DATE", LiteralForm::Date, BasicDataType::Date, "DATE"},
    {"TOD", LiteralForm::TimeOfDay, BasicDataType::TimeOfDay, "TOD"},
    {"TIME_OF_DAY", LiteralForm::TimeOfDay, BasicDataType::TimeOfDay, "TOD"},
    {"DT", LiteralForm::DateAndTime, BasicDataType::DateAndTime, "DT"},
    {"DATE_AND_TIME", LiteralForm::DateAndTime, BasicDataType::DateAndTime, "DT"},
    {"STRING", LiteralForm::String, BasicDataType::String, "STRING"},
    {"WSTRING", LiteralForm::String, BasicDataType::WString, "WSTRING"},
};
// An untyped literal has the first of these types that holds its value.
constexpr const NamedType* kDecimalTypes[] = {
    &kLiteralTypes[0], &kLiteralTypes[1], &kLiteralTypes[2], &kLiteralTypes[3], &kLiteralTypes[7]};
constexpr const NamedType* kBasedTypes[] = {&kLiteralTypes[4], &kLiteralTypes[5], &kLiteralTypes[6],
                                            &kLiteralTypes[7]};

const NamedType* findType(std::string_view prefix) {
  for (const NamedType& type : kLiteralTypes) {
    if (equalIgnoringCase(type.prefix, prefix)) return &type;
  }
  return nullptr;
}

// Parses the whole of `text`, a decimal number or one with the base 2, 8 or 16 (`16#FF`).
LiteralError parseMagnitude(std::string_view text, std::uint64_t& magnitude, bool& based) {
  LiteralError error = takeDigits(text, 10, magnitude);
  based = error == LiteralError::None && takeIf(text, '#');
  if (based) {
    if (magnitude != 2 && magnitude != 8 && magnitude != 16) return LiteralError::Malformed;
    error = takeDigits(text, static_cast<unsigned>(magnitude), magnitude);
  }
  return text.empty() ? error : LiteralError::Malformed;
}

bool looksReal(std::string_view text) {
  return text.find('#') == std::string_view::npos &&
         text.find_first_of(".eE") != std::string_view::npos;
}

void setType(LiteralValue& out, const NamedType& type) {
  out.form = type.form;
  out.type = type.type;
  out.typeName = type.typeName;
}

// `type` is null for an untyped literal.
LiteralError parseInteger(std::string_view digits, const NamedType* type, LiteralValue& out) {
  bool based = false;
  const LiteralError error = parseMagnitude(digits, out.magnitude, based);
  if (error != LiteralError::None) return error;
  if (out.magnitude == 0) out.negative = false;
  if (type != nullptr) {
    setType(out, *type);
    return integerFits(out.negative, out.magnitude, type->type) ? LiteralError::None
                                                                : LiteralError::OutOfRange;
  }
  const auto choose = [&out](const auto& candidates) {
    for (const NamedType* candidate : candidates) {
      if (!integerFits(out.negative, out.magnitude, candidate->type)) continue;
      setType(out, *candidate);
      return LiteralError::None;
    }
    return LiteralError::OutOfRange;
  };
  return based && !out.negative ? choose(kBasedTypes) : choose(kDecimalTypes);
}

LiteralError parseBool(std::string_view text, LiteralValue& out) {
  if (equalIgnoringCase(text, "TRUE") || equalIgnoringCase(text, "FALSE")) {
    out.magnitude = toLower(text.front()) == 't' ? 1 : 0;
    return LiteralError::None;
  }
  bool based = false;
  const LiteralError error = parseMagnitude(text, out.magnitude, based);
  if (error != LiteralError::None) return error;
  return out.magnitude <= 1 ? LiteralError::None : LiteralError::OutOfRange;
}

// Moves leading digits from `text` to `out`, without their underscores.
bool appendDigits(std::string_view& text, std::string& out) {
  bool afterDigit = false;
  while (!text.empty() && (isDigit(text.front()) || (afterDigit && text.front() == '_'))) {
    afterDigit = text.front() != '_';
    if (afterDigit) out += text.front();
    text.remove_prefix(1);
  }
  return afterDigit;
}

// True when `value`, rounded to a REAL, is finite and, unless it is 0, not 0.
bool inRangeOfReal(double value) {
  const double magnitude = value < 0 ? -value : value;
  return magnitude < 0x1.ffffffp127 && (magnitude == 0 || magnitude > 0x1p-150);
}

LiteralError parseReal(std::string_view text, const NamedType* type, LiteralValue& out) {
  std::string& digits = out.text;
  digits.assign(out.negative ? "-" : "");
  if (!appendDigits(text, digits)) return LiteralError::Malformed;
  if (takeIf(text, '.')) {
    digits += '.';
    if (!appendDigits(text, digits)) return LiteralError::Malformed;
  } else if (text.empty()) {
    digits += ".0";
  }
  if (!text.empty() && toLower(text.front()) == 'e') {
    text.remove_prefix(1);
    digits += 'e';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
      digits += text.front();
      text.remove_prefix(1);
    }
    if (!appendDigits(text, digits)) return LiteralError::Malformed;
  }
  if (!text.empty()) return LiteralError::Malformed;

  const char* end = digits.data() + digits.size();
  if (std::from_chars(digits.data(), end, out.real).ec != std::errc()) {
    return LiteralError::OutOfRange;
  }
  if (type == nullptr) type = findType(inRangeOfReal(out.real) ? "REAL" : "LREAL");
  setType(out, *type);
  return type->type == BasicDataType::LReal || inRangeOfReal(out.real) ? LiteralError::None
                                                                       : LiteralError::OutOfRange;
}

// Removes a sign and the white space after it; false when there is no sign.
bool takeSign(std::string_view& text, bool& negative) {
  negative = takeIf(text, '-');
  if (!negative && !takeIf(text, '+')) return false;
  while (takeIf(text, ' ') || takeIf(text, '\t') || takeIf(text, '\r') || takeIf(text, '\n')) {
  }
  return true;
}

LiteralError parseTyped(std::string_view prefix, std::string_view text, bool isSigned,
                        LiteralValue& out) {
  const NamedType* type = findType(prefix);
  if (type == nullptr) return LiteralError::NotALiteral;
  out.fixedType = true;
  const bool isNumber = type->form == LiteralForm::Integer || type->form == LiteralForm::Real;
  if (isSigned && !isNumber) return LiteralError::Malformed;
  if (isNumber && !text.empty() && (text.front() == '-' || text.front() == '+')) {
    if (isSigned) return LiteralError::Malformed;
    out.negative = text.front() == '-';
    text.remove_prefix(1);
  }
  setType(out, *type);
  switch (type->form) {
    case LiteralForm::Bool:
      return parseBool(text, out);
    case LiteralForm::Integer:
      return parseInteger(text, type, out);
    case LiteralForm::Real:
      return parseReal(text, type, out);
    case LiteralForm::Duration:
      return literal::parseDuration(text, type->type == BasicDataType::LTime, out);
    case LiteralForm::Date:
    case LiteralForm::TimeOfDay:
    case LiteralForm::DateAndTime:
      return literal::parseCalendar(text, out);
    case LiteralForm::String:
      return literal::parseString(text, type->type == BasicDataType::WString, out);
  }
  return LiteralError::NotALiteral;
}

}  // namespace

LiteralError parseLiteral(std::string_view text, LiteralValue& out) {
  out = LiteralValue();
  const bool isSigned = takeSign(text, out.negative);
  if (text.empty()) return LiteralError::NotALiteral;
  if (isDigit(text.front())) {
    return looksReal(text) ? parseReal(text, nullptr, out) : parseInteger(text, nullptr, out);
  }
  if (isLetter(text.front()) || text.front() == '_') {
    const std::size_t mark = text.find('#');
    if (mark != std::string_view::npos) {
      return parseTyped(text.substr(0, mark), text.substr(mark + 1), isSigned, out);
    }
    if (isSigned || !(equalIgnoringCase(text, "TRUE") || equalIgnoringCase(text, "FALSE"))) {
      return LiteralError::NotALiteral;
    }
    setType(out, *findType("BOOL"));
    return parseBool(text, out);
  }
  if (isSigned || (text.front() != '\'' && text.front() != '"')) return LiteralError::NotALiteral;
  const bool isWide = text.front() == '"';
  setType(out, *findType(isWide ? "WSTRING" : "STRING"));
  return literal::parseString(text, isWide, out);
}

bool namesLiteralType(std::string_view name) { return findType(name) != nullptr; }

bool parseIntegerLiteral(std::string_view text, bool& negative, std::uint64_t& magnitude) {
  // A quick test first, because most of these texts are names or calls.
  if (text.empty() || looksReal(text) || text.find_first_of("('\"") != std::string_view::npos) {
    return false;
  }
  LiteralValue value;
  if (parseLiteral(text, value) != LiteralError::None || value.form != LiteralForm::Integer) {
    return false;
  }
  negative = value.negative;
  magnitude = value.magnitude;
  return true;
}

bool integerFits(bool negative, std::uint64_t magnitude, vel::BasicDataType type) {
  const auto number = static_cast<int>(type);
  if (type == BasicDataType::Real || type == BasicDataType::LReal) return true;
  if (number < static_cast<int>(BasicDataType::SInt) ||
      number > static_cast<int>(BasicDataType::ULInt)) {
    return false;
  }
  const bool isSigned = number <= static_cast<int>(BasicDataType::LInt);
  const int bits = 8 << ((number - 1) % 4);
  const std::uint64_t highest = ~std::uint64_t{0} >> (64 - bits + (isSigned ? 1 : 0));
  if (!negative || magnitude == 0) return magnitude <= highest;
  return isSigned && magnitude <= highest + 1;
}

}  // namespace hostkit
