#include <charconv>
#include <string>
#include <system_error>

#include "hostkit/literal_parts.h"

namespace hostkit::literal {

namespace {

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

}  // namespace

LiteralError parseString(std::string_view text, bool isWide, LiteralValue& out) {
  const char quote = isWide ? '"' : '\'';
  if (!takeIf(text, quote)) return LiteralError::Malformed;
  out.text.clear();
  while (!text.empty() && text.front() != quote) {
    const char c = text.front();
    text.remove_prefix(1);
    if (c == '\n' || c == '\r') return LiteralError::Malformed;
    if (c != '$') {
      out.text += c;
    } else if (!takeEscape(text, isWide, out.text)) {
      return LiteralError::Malformed;
    }
  }
  return takeIf(text, quote) && text.empty() ? LiteralError::None : LiteralError::Malformed;
}

}  // namespace hostkit::literal
