// Compiles unit tests.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/termination_guard.h"

namespace velc {

struct TestBuild {
  std::string compiler;
  bool strict = false;    // a division by zero ends a test
  bool coverage = false;  // counts what is executed
};

// Compiles the C files `sources` in `folder`, all of them at once, and links `folder`/tests.
// Returns the object files. Throws Failure when the compiler does not make them.
std::vector<std::filesystem::path> buildTests(const std::filesystem::path& folder,
                                              const std::vector<std::filesystem::path>& sources,
                                              const TestBuild& build,
                                              const TerminationGuard& guard);

}  // namespace velc
