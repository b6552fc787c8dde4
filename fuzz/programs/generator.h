// Random programs: well-typed, and the same for the same seed.
#pragma once

#include <cstdint>

#include "fuzz/programs/tree.h"

namespace generated {

// A PROGRAM and the functions and function blocks that it uses, whose names end in
// `suffix`. It ends by itself and does nothing that C leaves to the compiler.
Units generate(std::uint64_t seed, const std::string& suffix);

}  // namespace generated
