// Comparison of names regardless of letter case, without copying them.
#pragma once

#include <algorithm>
#include <string_view>

namespace vel {

// Only A to Z fold, onto a to z: "_" sorts before every letter.
constexpr unsigned char foldCase(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
}

inline bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return foldCase(x) == foldCase(y); });
}

struct LessIgnoringCase {
  bool operator()(std::string_view a, std::string_view b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return foldCase(x) < foldCase(y); });
  }
};

}  // namespace vel
