// Random programs through plugin, reference host, C compiler and runtime.
#pragma once

#include <string>
#include <vector>

#include "fuzz/programs/tree.h"

namespace generated {

struct Toolchain {
  std::string compiler = "cc";
  bool sanitize = false;  // address and undefined behaviour of programs, not of the runtime
};

struct Outcome {
  enum Kind { Right, Refused, NotCompiled, Crashed, Wrong };
  Kind kind = Right;
  std::string text;  // what was said, or the values that are not as expected
};

// Runs the programs as one; their names differ.
Outcome run(const std::vector<Units>& programs, const Toolchain& toolchain);

// The smallest program found that fails as `units` does.
Units shrunk(Units units, const Toolchain& toolchain);

}  // namespace generated
