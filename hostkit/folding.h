// Names of the language match in any letter case (ASCII).
#pragma once

#include <string_view>
#include <unordered_map>

#include "core/case_folding.h"

namespace hostkit {

constexpr char toUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

using vel::equalIgnoringCase;

// Keys must outlive the map.
template <typename T>
using FoldedMap =
    std::unordered_map<std::string_view, T, vel::HashIgnoringCase, vel::EqualIgnoringCase>;

}  // namespace hostkit
