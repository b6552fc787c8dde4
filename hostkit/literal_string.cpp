#include <charconv>
#include <string>
#include <system_error>

#include "hostkit/encoding.h"
#include "hostkit/literal_parts.h"

namespace hostkit::literal {

namespace {

// Removes the hexadecimal digits that follow a dollar sign and returns the character in `code`.
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
  const std::size_t known = kNames.find(toLower(text.front()));
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
  // Combine a surrogate pair into one character.
  std::string_view next = text;
  std::uint32_t second = 0;
  if (isHighSurrogate(code) && takeIf(next, '$') && takeCode(next, 4, second) &&
      isLowSurrogate(second)) {
    code = combined(code, second);
    text = next;
  }
  appendUtf8(code, out);
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
