#pragma once

#include <cstdint>

#include "refhost/diagnostics.h"
#include "refhost/syntax/source.h"
#include "refhost/syntax/tree.h"

namespace refhost {

// Expressions and statements that are nested deeper are reported as errors, so that recursion over
// the tree cannot exhaust the stack. Parentheses count. Lists do not count, and neither do the left
// operands in a chain of operators, which are visited by a loop.
constexpr int kMaxNesting = 1000;

// Parses file `file` of `sources`, appends its units to `tree` and its errors to `messages`. After
// a syntax error parsing resumes at the next statement or unit, so `tree` contains everything that
// could be parsed.
void parse(const SourceManager& sources, std::uint32_t file, Tree& tree, Diagnostics& messages);

}  // namespace refhost
