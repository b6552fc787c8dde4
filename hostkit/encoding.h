// Strings in UTF-8 and UTF-16.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace hostkit {

bool isUtf8(std::string_view text);

// Removes the first character from `text`, which must not be empty, and returns it. If `text`
// does not begin with valid UTF-8, removes one byte and returns nullopt.
std::optional<char32_t> takeCharacter(std::string_view& text);

// The size in bytes of the first `count` characters of `text`, or of `text` if it has fewer. An
// invalid byte counts as a character.
std::size_t sizeOfFirst(std::size_t count, std::string_view text);

// The number of characters of `text`, which must be valid UTF-8.
std::size_t countCharacters(std::string_view text);

// Appends the character in UTF-8. Half of a surrogate pair becomes three bytes.
void appendUtf8(char32_t character, std::string& out);

// The UTF-16 code units of a string made by appendUtf8, which may contain half surrogate pairs.
// An invalid byte becomes the code unit of the same value.
std::u16string utf16(std::string_view text);

constexpr bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
// The character of a high and a low surrogate.
constexpr char32_t combined(char32_t high, char32_t low) {
  return 0x10000 + ((high - 0xD800) << 10U) + (low - 0xDC00);
}

}  // namespace hostkit
