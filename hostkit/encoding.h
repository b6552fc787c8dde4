// Texts in UTF-8 and UTF-16.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace hostkit {

bool isUtf8(std::string_view text);

// Takes the first character of `text`, which is not empty. Where that is no UTF-8, takes one
// byte and has no value.
std::optional<char32_t> takeCharacter(std::string_view& text);

// Bytes of the first `count` characters of `text`, which may have fewer; a byte that is no
// UTF-8 counts as one.
std::size_t sizeOfFirst(std::size_t count, std::string_view text);

// Characters of a text that is UTF-8.
std::size_t countCharacters(std::string_view text);

// Appends the character in UTF-8; half of a surrogate pair in three bytes, as if it were one.
void appendUtf8(char32_t character, std::string& out);

// The code units of a text that appendUtf8 made, the halves of pairs included. A byte that is
// no UTF-8 stands for the character of its number.
std::u16string utf16(std::string_view text);

constexpr bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
// The character of a high and a low surrogate.
constexpr char32_t combined(char32_t high, char32_t low) {
  return 0x10000 + ((high - 0xD800) << 10U) + (low - 0xDC00);
}

}  // namespace hostkit
