// Declarations of variables that are missing, or that nobody needs.
#pragma once

#include <vector>

#include "refhost/diagnostic.h"
#include "refhost/editor/analysed_program.h"

namespace refhost {

// Adds the declaration of a name that is declared nowhere, if the surroundings tell its type.
void addDeclarations(const AnalysedProgram& program, const Diagnostic& message,
                     std::vector<Fix>& fixes);

// Adds the removal of a variable that is never used, and of a word that has no effect on one.
void addRemovals(const AnalysedProgram& program, const Diagnostic& message,
                 std::vector<Fix>& fixes);

}  // namespace refhost
