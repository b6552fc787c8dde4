// Lookup of names regardless of letter case (ASCII).
#pragma once

#include <string_view>
#include <unordered_map>

#include "core/case_folding.h"

namespace hostkit {

constexpr char toLower(char c) { return static_cast<char>(vel::foldCase(c)); }
constexpr bool isLetter(char c) { return toLower(c) >= 'a' && toLower(c) <= 'z'; }
constexpr char toUpper(char c) {
  return isLetter(c) ? static_cast<char>(toLower(c) - 'a' + 'A') : c;
}

using vel::equalIgnoringCase;

// Keys must outlive the map.
template <typename T>
using FoldedMap =
    std::unordered_map<std::string_view, T, vel::HashIgnoringCase, vel::EqualIgnoringCase>;

}  // namespace hostkit
