// Counts what is taken from the heap.
#pragma once

#include <cstddef>

// How often `operator new` has been called since the program began, in this program and in
// every library that it has loaded.
std::size_t allocations();
