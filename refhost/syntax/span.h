#pragma once

#include <cstdint>
#include <string_view>

namespace refhost {

// White space within a line.
inline constexpr std::string_view kBlanks = " \t\v\f";

// A range of bytes in a source text.
struct Span {
  std::uint32_t begin = 0;  // bytes from the start of the text
  std::uint32_t end = 0;    // one past the last byte
};

}  // namespace refhost
