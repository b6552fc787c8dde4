#include "cli/string_literal.h"

#include <fmt/format.h>

#include <cstdint>
#include <cstring>

namespace velc {

namespace {

// The escape of a character that may not stand in a string literal as it is; empty
// for all others.
std::string escape(char32_t c, char quote, int width) {
  switch (c) {
    case '$':
      return "$$";
    case '\t':
      return "$T";
    case '\n':
      return "$L";
    case '\f':
      return "$P";
    case '\r':
      return "$R";
    default:
      if (c == static_cast<unsigned char>(quote)) return {'$', quote};
      if (c < 0x20 || (c >= 0x7F && c < 0xA0)) {
        return fmt::format("${:0{}X}", static_cast<std::uint32_t>(c), width);
      }
      return {};
  }
}

void appendUtf8(std::string& out, char32_t c) {
  const auto byte = [&out](char32_t bits) { out += static_cast<char>(bits); };
  if (c < 0x80) {
    byte(c);
  } else if (c < 0x800) {
    byte(0xC0 | c >> 6);
    byte(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    byte(0xE0 | c >> 12);
    byte(0x80 | (c >> 6 & 0x3F));
    byte(0x80 | (c & 0x3F));
  } else {
    byte(0xF0 | c >> 18);
    byte(0x80 | (c >> 12 & 0x3F));
    byte(0x80 | (c >> 6 & 0x3F));
    byte(0x80 | (c & 0x3F));
  }
}

// Length of the UTF-8 sequence of a character beyond ASCII at the start of `text`;
// 0 when there is none.
std::size_t utf8Length(std::string_view text) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const std::size_t length = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : byte(0) >= 0xC2 ? 2 : 0;
  if (length == 0 || length > text.size()) return 0;
  char32_t c = byte(0) & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    c = c << 6 | (byte(i) & 0x3Fu);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0xA0, 0x800, 0x10000};
  const bool surrogate = c >= 0xD800 && c < 0xE000;
  return c < kSmallest[length] || c > 0x10FFFF || surrogate ? 0 : length;
}

std::uint16_t codeUnit(std::string_view bytes) {
  std::uint16_t unit = 0;
  std::memcpy(&unit, bytes.data(), sizeof unit);
  return unit;
}

}  // namespace

std::string stringLiteral(std::string_view bytes) {
  bytes = bytes.substr(0, bytes.find('\0'));
  std::string result = "'";
  while (!bytes.empty()) {
    std::size_t length = 1;
    const auto first = static_cast<unsigned char>(bytes[0]);
    std::string escaped = escape(first, '\'', 2);
    if (first >= 0x80) {
      length = utf8Length(bytes);
      escaped = length == 0 ? fmt::format("${:02X}", first) : std::string();
      if (length == 0) length = 1;
    }
    result.append(escaped.empty() ? bytes.substr(0, length) : escaped);
    bytes.remove_prefix(length);
  }
  return result + '\'';
}

std::string wideStringLiteral(std::string_view bytes) {
  const auto unit = [bytes](std::size_t i) -> char32_t {
    return i * 2 + 2 <= bytes.size() ? codeUnit(bytes.substr(i * 2)) : 0;
  };
  std::string result = "\"";
  for (std::size_t i = 0; unit(i) != 0; ++i) {
    char32_t c = unit(i);
    if (c >= 0xD800 && c < 0xDC00 && unit(i + 1) >= 0xDC00 && unit(i + 1) < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (unit(++i) - 0xDC00);
    }
    if (c >= 0xD800 && c < 0xE000) {  // half of a pair
      result += fmt::format("${:04X}", static_cast<std::uint32_t>(c));
    } else if (const std::string escaped = escape(c, '"', 4); !escaped.empty()) {
      result += escaped;
    } else {
      appendUtf8(result, c);
    }
  }
  return result + '"';
}

}  // namespace velc
