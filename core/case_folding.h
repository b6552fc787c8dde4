// Comparison of names regardless of letter case, without copying them.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vel {

// Only A to Z are folded, to a to z rather than the reverse so that "_" sorts before letters.
inline constexpr std::array<unsigned char, 256> kFolded = [] {
  std::array<unsigned char, 256> folded{};
  for (std::size_t c = 0; c < folded.size(); ++c) {
    folded[c] = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
  }
  return folded;
}();
constexpr unsigned char foldCase(char c) { return kFolded[static_cast<unsigned char>(c)]; }

inline bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return foldCase(x) == foldCase(y); });
}

struct EqualIgnoringCase {
  bool operator()(std::string_view a, std::string_view b) const { return equalIgnoringCase(a, b); }
};

// FNV-1a.
struct HashIgnoringCase {
  std::size_t operator()(std::string_view name) const {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char c : name) hash = (hash ^ foldCase(c)) * 0x100000001B3;
    return static_cast<std::size_t>(hash);
  }
};

struct LessIgnoringCase {
  bool operator()(std::string_view a, std::string_view b) const {
    const std::size_t shorter = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shorter; ++i) {
      const unsigned char x = foldCase(a[i]);
      const unsigned char y = foldCase(b[i]);
      if (x != y) return x < y;
    }
    return a.size() < b.size();
  }
};

}  // namespace vel
