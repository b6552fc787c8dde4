// Splits the names of conversions. The parts refer to the string that is passed.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace vel {

// A name split at every "_". Parts after the third are counted but not stored.
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
  // The last part of a typed or generic name; zero-terminated when the name is.
  std::string_view target() const { return parts[count - 1]; }

  std::array<std::string_view, 3> parts;
  std::size_t count = 0;
};

// A name in capitals, split at its first "_TO_".
struct ConversionEnds {
  explicit ConversionEnds(std::string_view name) {
    const std::size_t separator = name.find("_TO_");
    namesSource = separator != std::string_view::npos;
    if (namesSource) source = name.substr(0, separator);
    // A name without a source (`TO_INT`) lacks the leading "_" of the separator.
    target = name.substr(namesSource ? separator + 4 : std::min<std::size_t>(3, name.size()));
  }

  bool namesSource = false;
  std::string_view source;  // empty when the name has no source
  std::string_view target;
};

// The part after the first "TO_" of a name in capitals. A name without "TO_" loses its first
// two characters, as if "TO_" began one character before it.
inline std::string_view afterTo(std::string_view name) {
  const std::size_t to = name.find("TO_");
  return name.substr(to != std::string_view::npos ? to + 3 : std::min<std::size_t>(2, name.size()));
}

}  // namespace vel
