// Random programs, and what they compute.
#pragma once

#include <cstdint>
#include <map>

#include "fuzz/programs/tree.h"

namespace generated {

constexpr int kScans = 3;

// A PROGRAM and the types, global variables, functions and function blocks that it uses, whose
// names end in `suffix`. It is well-typed, ends by itself, does nothing that C leaves to the
// compiler, and is the same for the same seed.
Units generate(std::uint64_t seed, const std::string& suffix);

// The values of the variables of the PROGRAM and of the global ones after all scans, by their
// places, as `v1`, `v2[1,2].m3`. Throws Undefined with its statement, also for one that does not
// end.
std::map<std::string, Value> evaluated(const Units& units);

}  // namespace generated
