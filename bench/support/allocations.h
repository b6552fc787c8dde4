// Counts what is taken from the heap.
#pragma once

#include <cstddef>

// How often and how many bytes `operator new` has given since the program began, in this
// program and in every library it has loaded.
struct Allocations {
  std::size_t count = 0;
  std::size_t bytes = 0;

  static Allocations now();
};

inline Allocations operator-(const Allocations& a, const Allocations& b) {
  return {a.count - b.count, a.bytes - b.bytes};
}
