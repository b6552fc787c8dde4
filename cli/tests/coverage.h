// Which lines and branches of the Structured Text the tests have executed.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/termination_guard.h"
#include "refhost/session.h"

namespace velc {

struct Coverage {
  std::string tracefile;  // in the form of lcov
  std::string summary;    // one line
};

// Throws Failure for a compiler whose counters cannot be read.
void requireCoverage(const std::string& compiler);

// Reads the counters of the object files `objects`, which compileParts() made of C with lines, by
// the gcov that belongs to `compiler`. The tests themselves do not count.
Coverage readCoverage(const std::vector<std::filesystem::path>& objects,
                      const std::string& compiler, const refhost::SourceManager& sources,
                      const refhost::TestProgram& tests, const TerminationGuard& guard);

}  // namespace velc
