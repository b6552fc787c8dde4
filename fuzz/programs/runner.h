// Runs random programs and compares what they give with what they should.
#pragma once

#include <string>
#include <vector>

#include "fuzz/programs/tree.h"

namespace generated {

struct Toolchain {
  std::string compiler = "cc";
  bool sanitize = false;  // address and undefined behaviour of programs, not of the runtime
};

// What is wrong with the programs, run as one; an empty text for nothing. Their names differ.
std::string run(const std::vector<Units>& programs, const Toolchain& toolchain);

}  // namespace generated
