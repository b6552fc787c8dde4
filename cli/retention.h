// The file of `velc run --retain`, which keeps variables from one run to the next.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "refhost/session.h"

namespace velc {

struct Retained {
  // For each variable a byte that is 1 if it has a value, and then its elementary values.
  std::string bytes;
  std::uint32_t clock = 0;  // the time of the next scan in milliseconds
};

// Reads the values of `variables` from the file `path` and appends a line to `notices` for each
// variable that is left out. A file that does not exist has no values. Throws Failure for a file
// that cannot be read or has another form.
Retained loadRetained(const std::string& path,
                      const std::vector<refhost::ProgramVariable>& variables, std::string& notices);

// The text of the file. Each of the variables must have a value. Throws Failure when
// `retained.bytes` ends too early.
std::string retainedText(const Retained& retained,
                         const std::vector<refhost::ProgramVariable>& variables);

}  // namespace velc
