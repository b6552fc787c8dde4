// Names of the language match in any letter case (ASCII).
#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_map>

namespace refhost {

constexpr char fold(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

constexpr bool equalFolded(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (fold(a[i]) != fold(b[i])) return false;
  }
  return true;
}

struct FoldedHash {
  std::size_t operator()(std::string_view text) const {
    std::size_t hash = 1469598103934665603ULL;
    for (const char c : text) {
      hash = (hash ^ static_cast<unsigned char>(fold(c))) * 1099511628211ULL;
    }
    return hash;
  }
};

struct FoldedEqual {
  bool operator()(std::string_view a, std::string_view b) const { return equalFolded(a, b); }
};

// Keys must outlive the map.
template <typename T>
using FoldedMap = std::unordered_map<std::string_view, T, FoldedHash, FoldedEqual>;

}  // namespace refhost
