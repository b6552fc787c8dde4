// A source position. The plugin does not interpret it, it only copies it into messages.
#pragma once

#include <cstdint>

namespace vel {

class TextLocation {
 public:
  constexpr explicit TextLocation(std::uint32_t file = 0, std::uint32_t offset = 0)
      : file_(file), offset_(offset) {}

  // The host's index of the source file.
  constexpr std::uint32_t file() const { return file_; }
  // Bytes from the start of that file to the first character of the node.
  constexpr std::uint32_t offset() const { return offset_; }

 private:
  std::uint32_t file_;
  std::uint32_t offset_;
};

static_assert(sizeof(TextLocation) == 8, "a position is an 8-byte value");

}  // namespace vel
