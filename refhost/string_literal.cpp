#include "refhost/string_literal.h"

#include <fmt/format.h>

#include <cstdint>
#include <cstring>
#include <optional>

#include "hostkit/encoding.h"

namespace refhost {

namespace {

// The escape sequence of a character that a string literal cannot contain; empty for all others.
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

// Removes the first code unit from `bytes` and returns it; 0 at the end.
char32_t takeUnit(std::string_view& bytes) {
  std::uint16_t unit = 0;
  if (bytes.size() < sizeof unit) return 0;
  std::memcpy(&unit, bytes.data(), sizeof unit);
  bytes.remove_prefix(sizeof unit);
  return unit;
}

// The same for a character, which may be half of a surrogate pair.
char32_t takeWideCharacter(std::string_view& bytes) {
  const char32_t high = takeUnit(bytes);
  std::string_view rest = bytes;
  const char32_t low = takeUnit(rest);
  if (!hostkit::isHighSurrogate(high) || !hostkit::isLowSurrogate(low)) return high;
  bytes = rest;
  return hostkit::combined(high, low);
}

}  // namespace

std::string stringLiteral(std::string_view bytes) {
  bytes = bytes.substr(0, bytes.find('\0'));
  std::string result = "'";
  while (!bytes.empty()) {
    std::string_view character = bytes;
    const std::optional<char32_t> code = hostkit::takeCharacter(bytes);
    character.remove_suffix(bytes.size());
    if (!code || (*code >= 0x80 && *code < 0xA0)) {
      for (const char byte : character) {
        result += fmt::format("${:02X}", static_cast<unsigned char>(byte));
      }
      continue;
    }
    const std::string escaped = escape(*code, '\'', 2);
    result.append(escaped.empty() ? character : escaped);
  }
  return result + '\'';
}

std::string wideStringLiteral(std::string_view bytes) {
  std::string result = "\"";
  while (const char32_t c = takeWideCharacter(bytes)) {
    if (hostkit::isHighSurrogate(c) || hostkit::isLowSurrogate(c)) {  // unpaired
      result += fmt::format("${:04X}", static_cast<std::uint32_t>(c));
    } else if (const std::string escaped = escape(c, '"', 4); !escaped.empty()) {
      result += escaped;
    } else {
      hostkit::appendUtf8(c, result);
    }
  }
  return result + '"';
}

std::string plainText(vel::BasicDataType type, std::string_view bytes) {
  if (type == vel::BasicDataType::String) return std::string(bytes.substr(0, bytes.find('\0')));
  std::string result;
  while (const char32_t c = takeWideCharacter(bytes)) {
    const bool unpaired = hostkit::isHighSurrogate(c) || hostkit::isLowSurrogate(c);
    hostkit::appendUtf8(unpaired ? U'\uFFFD' : c, result);
  }
  return result;
}

}  // namespace refhost
