#include "refhost/syntax/literal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace refhost {

namespace {

using vel::BasicDataType;

struct NamedType {
  std::string_view prefix;  // in front of the '#'
  LiteralForm form;
  BasicDataType type;
  const char* typeName;
};

constexpr NamedType kTypes[] = {
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
// Where the source names no type: the first that holds the value.
constexpr const NamedType* kDecimalTypes[] = {&kTypes[0], &kTypes[1], &kTypes[2], &kTypes[3],
                                              &kTypes[7]};
constexpr const NamedType* kBasedTypes[] = {&kTypes[4], &kTypes[5], &kTypes[6], &kTypes[7]};

constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isLetter(char c) { return (lower(c) >= 'a' && lower(c) <= 'z') || c == '_'; }

bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                            [](char x, char y) { return lower(x) == lower(y); });
}

const NamedType* findType(std::string_view prefix) {
  for (const NamedType& type : kTypes) {
    if (equalIgnoringCase(type.prefix, prefix)) return &type;
  }
  return nullptr;
}

bool takeIf(std::string_view& text, char c) {
  if (text.empty() || text.front() != c) return false;
  text.remove_prefix(1);
  return true;
}

// Takes digits of `base` with single underscores between them.
LiteralError takeDigits(std::string_view& text, unsigned base, std::uint64_t& value) {
  value = 0;
  bool overflow = false;
  bool afterDigit = false;
  while (!text.empty()) {
    const char c = lower(text.front());
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

// The whole of `text` is decimal, or based with 2, 8 or 16.
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

// `type` is null where the source names none.
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

LiteralError parseBool(std::string_view text, const NamedType& type, LiteralValue& out) {
  setType(out, type);
  if (equalIgnoringCase(text, "TRUE") || equalIgnoringCase(text, "FALSE")) {
    out.magnitude = lower(text.front()) == 't' ? 1 : 0;
    return LiteralError::None;
  }
  bool based = false;
  const LiteralError error = parseMagnitude(text, out.magnitude, based);
  if (error != LiteralError::None) return error;
  return out.magnitude <= 1 ? LiteralError::None : LiteralError::OutOfRange;
}

// Appends digits, underscores left out, to `out`.
bool appendDigits(std::string_view& text, std::string& out) {
  bool afterDigit = false;
  while (!text.empty() && (isDigit(text.front()) || (afterDigit && text.front() == '_'))) {
    afterDigit = text.front() != '_';
    if (afterDigit) out += text.front();
    text.remove_prefix(1);
  }
  return afterDigit;
}

// Rounds to a finite REAL, and to zero only when it is zero.
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
  if (!text.empty() && lower(text.front()) == 'e') {
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

struct DurationUnit {
  std::string_view name;
  std::uint64_t nanoseconds;
};

// From large to small, the order in which a literal gives them.
constexpr DurationUnit kUnits[] = {
    {"d", 86'400'000'000'000},
    {"h", 3'600'000'000'000},
    {"m", 60'000'000'000},
    {"s", 1'000'000'000},
    {"ms", 1'000'000},
    {"us", 1'000},
    {"ns", 1},
};

// Nanoseconds of the digits after a point, `unit` nanoseconds each whole; what is
// below a nanosecond is dropped.
std::uint64_t fractionOf(std::string_view digits, std::uint64_t unit) {
  std::uint64_t sum = 0;
  for (const char c : digits) {
    if (c == '_') continue;
    unit /= 10;
    sum += unit * static_cast<std::uint64_t>(c - '0');
  }
  return sum;
}

LiteralError parseDuration(std::string_view text, const NamedType& type, LiteralValue& out) {
  setType(out, type);
  out.negative = takeIf(text, '-');
  if (!out.negative) takeIf(text, '+');
  std::uint64_t total = 0;
  bool overflow = false;
  std::size_t nextUnit = 0;
  bool last = false;
  do {
    // Digits would take the underscore in front of a unit for one of their own.
    std::uint64_t count = 0;
    const LiteralError error = takeDigits(text, 10, count);
    if (last || error == LiteralError::Malformed) return LiteralError::Malformed;
    overflow |= error == LiteralError::OutOfRange;
    std::string_view fraction;
    if (takeIf(text, '.')) {
      last = true;
      fraction = text;
      std::uint64_t ignored = 0;
      if (takeDigits(text, 10, ignored) == LiteralError::Malformed) return LiteralError::Malformed;
      fraction.remove_suffix(text.size());
    }
    const std::size_t length = std::min(
        text.size(), static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isLetter) -
                                              text.begin()));
    const std::string_view name = text.substr(0, std::min(length, text.find('_')));
    const auto* unit = std::find_if(
        std::begin(kUnits) + nextUnit, std::end(kUnits),
        [name](const DurationUnit& candidate) { return equalIgnoringCase(candidate.name, name); });
    if (unit == std::end(kUnits)) return LiteralError::Malformed;
    nextUnit = static_cast<std::size_t>(unit - std::begin(kUnits)) + 1;
    text.remove_prefix(name.size());
    if (takeIf(text, '_') && text.empty()) return LiteralError::Malformed;

    overflow |= __builtin_mul_overflow(count, unit->nanoseconds, &count);
    overflow |= __builtin_add_overflow(total, count, &total);
    overflow |= __builtin_add_overflow(total, fractionOf(fraction, unit->nanoseconds), &total);
  } while (!text.empty());

  const bool isLong = type.type == BasicDataType::LTime;
  const std::uint64_t ticks = isLong ? total : total / 1'000'000;
  if (overflow ||
      !integerFits(out.negative, ticks, isLong ? BasicDataType::LInt : BasicDataType::DInt)) {
    return LiteralError::OutOfRange;
  }
  out.ticks = static_cast<std::int64_t>(out.negative ? 0 - ticks : ticks);
  return LiteralError::None;
}

// Takes a number within the limits that `separator` (0: none) leads to.
bool takeField(std::string_view& text, char separator, std::uint64_t low, std::uint64_t high,
               std::int64_t& field) {
  if (separator != 0 && !takeIf(text, separator)) return false;
  std::uint64_t value = 0;
  if (takeDigits(text, 10, value) != LiteralError::None || value < low || value > high)
    return false;
  field = static_cast<std::int64_t>(value);
  return true;
}

// Days from 1970-01-01 in the Gregorian calendar. Years begin in March here, so
// that the day added in a leap year is the last.
std::int64_t daysFromCivil(std::int64_t year, std::int64_t month, std::int64_t day) {
  const std::int64_t y = month <= 2 ? year - 1 : year;
  const std::int64_t era = y / 400;
  const std::int64_t yearOfEra = y - era * 400;
  const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

bool takeDate(std::string_view& text, std::int64_t& seconds) {
  std::int64_t year = 0;
  std::int64_t month = 0;
  std::int64_t day = 0;
  if (!takeField(text, 0, 1, 9999, year) || !takeField(text, '-', 1, 12, month) ||
      !takeField(text, '-', 1, 31, day)) {
    return false;
  }
  const std::int64_t firstOfNext =
      month == 12 ? daysFromCivil(year + 1, 1, 1) : daysFromCivil(year, month + 1, 1);
  const std::int64_t days = daysFromCivil(year, month, day);
  seconds = days * 86'400;
  return days < firstOfNext;
}

// "12:30:15.25"; the seconds may be left out.
bool takeClock(std::string_view& text, std::int64_t& milliseconds) {
  std::int64_t hour = 0;
  std::int64_t minute = 0;
  std::int64_t second = 0;
  if (!takeField(text, 0, 0, 23, hour) || !takeField(text, ':', 0, 59, minute)) return false;
  if (!text.empty() && !takeField(text, ':', 0, 59, second)) return false;
  milliseconds = ((hour * 60 + minute) * 60 + second) * 1000;
  if (takeIf(text, '.')) {
    const std::string_view fraction = text;
    std::uint64_t ignored = 0;
    if (takeDigits(text, 10, ignored) == LiteralError::Malformed) return false;
    milliseconds += static_cast<std::int64_t>(
        fractionOf(fraction.substr(0, fraction.size() - text.size()), 1000));
  }
  return true;
}

LiteralError parseCalendar(std::string_view text, const NamedType& type, LiteralValue& out) {
  setType(out, type);
  std::int64_t seconds = 0;
  std::int64_t milliseconds = 0;
  const bool hasDate = type.form != LiteralForm::TimeOfDay;
  const bool hasClock = type.form != LiteralForm::Date;
  if (hasDate && !takeDate(text, seconds)) return LiteralError::Malformed;
  if (hasDate && hasClock && !takeIf(text, '-')) return LiteralError::Malformed;
  if (hasClock && !takeClock(text, milliseconds)) return LiteralError::Malformed;
  if (!text.empty()) return LiteralError::Malformed;
  out.ticks = hasDate ? seconds + milliseconds / 1000 : milliseconds;
  return out.ticks >= 0 && out.ticks <= std::numeric_limits<std::uint32_t>::max()
             ? LiteralError::None
             : LiteralError::OutOfRange;
}

void appendUtf8(std::string& out, std::uint32_t code) {
  const auto append = [&out](std::uint32_t byte) { out += static_cast<char>(byte); };
  if (code < 0x80) {
    append(code);
  } else if (code < 0x800) {
    append(0xC0U | code >> 6U);
    append(0x80U | (code & 0x3FU));
  } else if (code < 0x10000) {
    append(0xE0U | code >> 12U);
    append(0x80U | (code >> 6U & 0x3FU));
    append(0x80U | (code & 0x3FU));
  } else {
    append(0xF0U | code >> 18U);
    append(0x80U | (code >> 12U & 0x3FU));
    append(0x80U | (code >> 6U & 0x3FU));
    append(0x80U | (code & 0x3FU));
  }
}

// Takes the hexadecimal digits of a character after its dollar sign.
bool takeCode(std::string_view& text, std::size_t digits, std::uint32_t& code) {
  if (text.size() < digits) return false;
  const char* end = text.data() + digits;
  const auto result = std::from_chars(text.data(), end, code, 16);
  text.remove_prefix(digits);
  return result.ec == std::errc() && result.ptr == end;
}

bool takeEscape(std::string_view& text, bool wide, std::string& out) {
  if (text.empty()) return false;
  constexpr std::string_view kNames = "$'\"lnprt";
  constexpr std::string_view kValues = "$'\"\n\n\f\r\t";
  const std::size_t known = kNames.find(lower(text.front()));
  if (known != std::string_view::npos) {
    out += kValues[known];
    text.remove_prefix(1);
    return true;
  }
  std::uint32_t code = 0;
  if (!takeCode(text, wide ? 4 : 2, code)) return false;
  if (!wide) {
    out += static_cast<char>(code);
    return true;
  }
  // Two halves of a pair make one character.
  std::string_view next = text;
  std::uint32_t second = 0;
  if (code >= 0xD800 && code <= 0xDBFF && takeIf(next, '$') && takeCode(next, 4, second) &&
      second >= 0xDC00 && second <= 0xDFFF) {
    code = 0x10000U + ((code - 0xD800U) << 10U) + (second - 0xDC00U);
    text = next;
  }
  appendUtf8(out, code);
  return true;
}

LiteralError parseString(std::string_view text, const NamedType& type, LiteralValue& out) {
  setType(out, type);
  const bool wide = type.type == BasicDataType::WString;
  const char quote = wide ? '"' : '\'';
  if (!takeIf(text, quote)) return LiteralError::Malformed;
  out.text.clear();
  while (!text.empty() && text.front() != quote) {
    const char c = text.front();
    text.remove_prefix(1);
    if (c == '\n' || c == '\r') return LiteralError::Malformed;
    if (c != '$') {
      out.text += c;
    } else if (!takeEscape(text, wide, out.text)) {
      return LiteralError::Malformed;
    }
  }
  return takeIf(text, quote) && text.empty() ? LiteralError::None : LiteralError::Malformed;
}

// A sign, if there is one, and the white space after it.
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
  bool negative = false;
  if (isNumber && !text.empty() && (text.front() == '-' || text.front() == '+')) {
    if (isSigned) return LiteralError::Malformed;
    negative = text.front() == '-';
    text.remove_prefix(1);
    out.negative = negative;
  }
  switch (type->form) {
    case LiteralForm::Bool:
      return parseBool(text, *type, out);
    case LiteralForm::Integer:
      return parseInteger(text, type, out);
    case LiteralForm::Real:
      return parseReal(text, type, out);
    case LiteralForm::Duration:
      return parseDuration(text, *type, out);
    case LiteralForm::Date:
    case LiteralForm::TimeOfDay:
    case LiteralForm::DateAndTime:
      return parseCalendar(text, *type, out);
    case LiteralForm::String:
      return parseString(text, *type, out);
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
  if (isLetter(text.front())) {
    const std::size_t mark = text.find('#');
    if (mark != std::string_view::npos) {
      return parseTyped(text.substr(0, mark), text.substr(mark + 1), isSigned, out);
    }
    const bool isBool = equalIgnoringCase(text, "TRUE") || equalIgnoringCase(text, "FALSE");
    return isBool && !isSigned ? parseBool(text, *findType("BOOL"), out)
                               : LiteralError::NotALiteral;
  }
  if (isSigned) return LiteralError::NotALiteral;
  if (text.front() == '\'') return parseString(text, *findType("STRING"), out);
  if (text.front() == '"') return parseString(text, *findType("WSTRING"), out);
  return LiteralError::NotALiteral;
}

bool parseIntegerLiteral(std::string_view text, bool& negative, std::uint64_t& magnitude) {
  // Most texts asked about are names or calls, which need no closer look.
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

}  // namespace refhost
