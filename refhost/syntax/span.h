// A piece of one source text.
#pragma once

#include <cstdint>

namespace refhost {

struct Span {
  std::uint32_t begin = 0;  // bytes from the start of the text
  std::uint32_t end = 0;    // one past the last byte
};

}  // namespace refhost
