// Removals of what has no use.
#pragma once

#include <vector>

#include "refhost/diagnostic.h"
#include "refhost/editor/analysed_program.h"

namespace refhost {

// Adds the removal of a variable that is never used, unless something else needs its declaration,
// and of a word that has no effect on one.
void addRemovals(const AnalysedProgram& program, const Diagnostic& message,
                 std::vector<Fix>& fixes);

}  // namespace refhost
