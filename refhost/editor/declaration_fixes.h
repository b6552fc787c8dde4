// Declarations of variables that are missing.
#pragma once

#include <vector>

#include "refhost/diagnostic.h"
#include "refhost/editor/analysed_program.h"

namespace refhost {

// Adds the declaration of a name that is declared nowhere, if the surroundings tell its type.
void addDeclarations(const AnalysedProgram& program, const Diagnostic& message,
                     std::vector<Fix>& fixes);

}  // namespace refhost
