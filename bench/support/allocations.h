// Counts heap allocations.
#pragma once

#include <cstddef>

// The number of calls of `operator new` since the program started, including those in the
// libraries that it has loaded.
std::size_t allocations();
