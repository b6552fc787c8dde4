#pragma once

#include <cstdint>

namespace refhost {

// A range of bytes in a source text.
struct Span {
  std::uint32_t begin = 0;  // bytes from the start of the text
  std::uint32_t end = 0;    // one past the last byte
};

}  // namespace refhost
