// Places that have storage in common: the same variable twice, or device memory that has several
// names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "refhost/session.h"

namespace velc {

struct SharedStorage {
  std::size_t first = 0;  // the numbers of two of the places, in their order
  std::size_t second = 0;
  // Their common bits of device memory; the same number twice for the same variable.
  std::uint64_t beginBit = 0;
  std::uint64_t endBit = 0;

  bool isSameVariable() const { return beginBit == endBit; }
};

// All pairs of elementary places that share storage.
std::vector<SharedStorage> sharedStorage(const std::vector<refhost::ProgramVariable>& places);

// A bit of device memory in the value of a place to which it belongs.
bool bitOf(const refhost::ProgramVariable& place, std::string_view bytes, std::uint64_t bit);

}  // namespace velc
