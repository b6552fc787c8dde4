#include "hostkit/literal_text.h"

#include <limits>

#include "hostkit/encoding.h"

namespace hostkit {
namespace {

using vel::BasicDataType;

bool isPlain(unsigned char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\' && c != '?'; }

// Octal escapes have a fixed length, whatever follows them.
void appendOctal(unsigned character, std::string& out) {
  constexpr unsigned kOctal = 8;
  out += '\\';
  for (unsigned place = kOctal * kOctal; place > 0; place /= kOctal) {
    out += static_cast<char>('0' + character / place % kOctal);
  }
}

void appendString(const std::string& bytes, std::string& out) {
  out += '"';
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (isPlain(byte)) {
      out += c;
    } else {
      appendOctal(byte, out);
    }
  }
  out += '"';
}

// Always a string literal: an array would not outlive the statement expression that it stands in.
void appendWideString(const std::string& text, std::string& out) {
  constexpr char16_t kFirstBeyondOctal = 512;
  out += "u\"";
  bool hexadecimal = false;  // the last unit, whose escape would take in digits that follow
  for (const char16_t unit : utf16(text)) {
    if (unit >= kFirstBeyondOctal) {
      out += "\\x";
      for (int shift = 12; shift >= 0; shift -= 4) out += "0123456789ABCDEF"[unit >> shift & 0xF];
    } else if (unit < 0x80 && isPlain(static_cast<unsigned char>(unit))) {
      if (hexadecimal) out += "\" u\"";
      out += static_cast<char>(unit);
    } else {
      appendOctal(unit, out);
    }
    hexadecimal = unit >= kFirstBeyondOctal;
  }
  out += '"';
}

}  // namespace

void appendInteger(bool negative, std::uint64_t magnitude, std::string& out) {
  constexpr std::uint64_t kMaxInt = std::numeric_limits<std::int32_t>::max();
  constexpr std::uint64_t kMaxLong = std::numeric_limits<std::int64_t>::max();
  // C has no literal for the lowest values: `-2147483648` negates a number that is no int.
  if (negative && magnitude == kMaxInt + 1) {
    out += "(-2147483647 - 1)";
  } else if (negative && magnitude == kMaxLong + 1) {
    out += "(-9223372036854775807LL - 1)";
  } else {
    const char* const suffix = magnitude <= kMaxInt ? "" : magnitude <= kMaxLong ? "LL" : "ULL";
    if (negative) out += '-';
    out += std::to_string(magnitude) + suffix;
  }
}

void appendInteger(std::int64_t value, std::string& out) {
  const auto bits = static_cast<std::uint64_t>(value);
  appendInteger(value < 0, value < 0 ? 0 - bits : bits, out);
}

namespace {

// The suffix of types wider than C's int: without it C would compute with the literal as int.
const char* suffixOf(BasicDataType type) {
  switch (type) {
    case BasicDataType::UDInt:
      return "u";
    case BasicDataType::LInt:
    case BasicDataType::LTime:
      return "LL";
    case BasicDataType::ULInt:
      return "ULL";
    default:
      return "";
  }
}

// Replaces the suffix that appendInteger has chosen by the size of the number.
void suffix(BasicDataType type, std::string& out) {
  const std::string_view wanted = suffixOf(type);
  if (wanted.empty() || out.back() == ')') return;
  while (out.back() == 'L' || out.back() == 'U') out.pop_back();
  out += wanted;
}

// True of a literal that is a REAL whatever it is an operand of, but has more digits than a REAL.
bool isRounded(const LiteralValue& value) {
  return value.fixedType && value.type == BasicDataType::Real &&
         static_cast<double>(static_cast<float>(value.real)) != value.real;
}

}  // namespace

void appendLiteral(const LiteralValue& value, BasicDataType type, std::string& out) {
  switch (value.form) {
    case LiteralForm::Bool:
      out += value.magnitude != 0 ? '1' : '0';
      break;
    case LiteralForm::Integer:
      appendInteger(value.negative, value.magnitude, out);
      suffix(type == BasicDataType::None && value.fixedType ? value.type : type, out);
      break;
    case LiteralForm::Real:
      // Rounded to REAL, so that a comparison with a REAL variable can be true.
      if (type == BasicDataType::Real || isRounded(value)) out += "(f32)";
      out += value.text;
      if (value.text.find_first_of(".eE") == std::string::npos) out += ".0";
      break;
    case LiteralForm::Duration:
      if (type == BasicDataType::LTime && value.type == BasicDataType::Time) {
        constexpr std::int64_t kNanosecondsPerMillisecond = 1000000;
        appendInteger(value.ticks * kNanosecondsPerMillisecond, out);
      } else {
        appendInteger(value.ticks, out);
      }
      suffix(type == BasicDataType::None ? value.type : type, out);
      break;
    case LiteralForm::Date:
    case LiteralForm::TimeOfDay:
    case LiteralForm::DateAndTime:
      out += std::to_string(value.ticks) + 'u';
      break;
    case LiteralForm::String:
      if (value.type == BasicDataType::String) {
        appendString(value.text, out);
      } else {
        appendWideString(value.text, out);
      }
      break;
  }
}

std::string literalText(std::string_view source) {
  std::string out;
  LiteralValue value;
  if (parseLiteral(source, value) == LiteralError::None) {
    appendLiteral(value, BasicDataType::None, out);
  }
  return out;
}

bool isNegative(const LiteralValue& value) {
  return value.negative || value.ticks < 0 ||
         (value.form == LiteralForm::Real && !value.text.empty() && value.text.front() == '-');
}

}  // namespace hostkit
