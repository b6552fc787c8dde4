#include "hostkit/encoding.h"

#include <utf8.h>

#include <iterator>

namespace hostkit {

bool isUtf8(std::string_view text) { return utf8::is_valid(text); }

std::optional<char32_t> takeCharacter(std::string_view& text) {
  constexpr std::size_t kLongest = 4;
  const char* end = text.data();
  const bool isAscii = static_cast<unsigned char>(*end) < 0x80;
  if (!isAscii && utf8::find_invalid(text.substr(0, kLongest)) == 0) {
    text.remove_prefix(1);
    return std::nullopt;
  }
  const char32_t character = utf8::unchecked::next(end);
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return character;
}

std::size_t sizeOfFirst(std::size_t count, std::string_view text) {
  std::string_view rest = text;
  for (; count > 0 && !rest.empty(); --count) takeCharacter(rest);
  return text.size() - rest.size();
}

std::size_t countCharacters(std::string_view text) {
  const char* const begin = text.data();
  return static_cast<std::size_t>(utf8::unchecked::distance(begin, begin + text.size()));
}

void appendUtf8(char32_t character, std::string& out) {
  utf8::unchecked::append(character, std::back_inserter(out));
}

namespace {

// Decodes half of a surrogate pair in three bytes, which is not valid UTF-8.
bool takeHalf(std::string_view& text, std::u16string& units) {
  constexpr std::size_t kSize = 3;
  if (text.size() < kSize || utf8::find_invalid(text.substr(0, kSize)) != 0) return false;
  const char* at = text.data();
  const char32_t half = utf8::unchecked::next(at);
  std::string encoded;
  appendUtf8(half, encoded);
  if (!isHighSurrogate(half) && !isLowSurrogate(half)) return false;
  if (text.substr(0, kSize) != encoded) return false;
  units += static_cast<char16_t>(half);
  text.remove_prefix(kSize);
  return true;
}

}  // namespace

std::u16string utf16(std::string_view text) {
  std::u16string units;
  while (!text.empty()) {
    const char* const begin = text.data();
    if (takeHalf(text, units)) continue;
    if (takeCharacter(text)) {
      utf8::unchecked::utf8to16(begin, text.data(), std::back_inserter(units));
    } else {
      units += static_cast<unsigned char>(*begin);
    }
  }
  return units;
}

}  // namespace hostkit
