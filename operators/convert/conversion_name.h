// The parts of a conversion's name. The parts are those of the text that is passed.
#pragma once

#include <algorithm>
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

// A name in capitals at its first "_TO_".
struct ConversionEnds {
  explicit ConversionEnds(std::string_view name) {
    const std::size_t separator = name.find("_TO_");
    namesSource = separator != std::string_view::npos;
    if (namesSource) source = name.substr(0, separator);
    // Without a source the separator counts as one before the first character.
    target = name.substr(namesSource ? separator + 4 : std::min<std::size_t>(3, name.size()));
  }

  bool namesSource = false;
  std::string_view source;  // empty when not named
  std::string_view target;
};

// What follows the first "TO_" of a name in capitals. Without one it counts as one
// before the first character.
inline std::string_view afterTo(std::string_view name) {
  const std::size_t to = name.find("TO_");
  return name.substr(to != std::string_view::npos ? to + 3 : std::min<std::size_t>(2, name.size()));
}

}  // namespace vel
