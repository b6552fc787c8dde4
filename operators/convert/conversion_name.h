// The parts of a conversion's name.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace vel {

// A name split at every "_". Of more parts than three only the number is kept.
struct ConversionName {
  explicit ConversionName(std::string_view name) {
    while (true) {
      const std::size_t end = name.find('_');
      if (count < parts.size()) parts[count] = name.substr(0, end);
      ++count;
      if (end == std::string_view::npos) return;
      name.remove_prefix(end + 1);
    }
  }

  bool isTyped() const { return count == 3; }    // X_TO_Y
  bool isGeneric() const { return count == 2; }  // TO_Y
  // The last part of such a name: zero-terminated when the name is.
  std::string_view target() const { return parts[count - 1]; }

  std::array<std::string_view, 3> parts;
  std::size_t count = 0;
};

}  // namespace vel
