// The changes that mend what a message is about.
#pragma once

#include <vector>

#include "refhost/diagnostic.h"
#include "refhost/editor/analysed_program.h"

namespace refhost {

// Those that the message has, then those that are found by its place in the tree, which takes time
// for the messages only that somebody asks about. The likeliest is the first one. After each of
// them the message is gone, and there is no new error.
std::vector<Fix> fixesFor(const AnalysedProgram& program, const Diagnostic& message);

// The pragma that silences a warning in its line. An offer for editors; no fault is mended by it.
Fix silencing(const SourceManager& sources, const Diagnostic& warning);

}  // namespace refhost
