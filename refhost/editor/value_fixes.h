// Values of enumerations that do not say of which.
#pragma once

#include <vector>

#include "refhost/diagnostic.h"
#include "refhost/editor/analysed_program.h"

namespace refhost {

// Adds the type in front of a value that several enumerations have: `Light#Off`.
void addTypes(const AnalysedProgram& program, const Diagnostic& message, std::vector<Fix>& fixes);

}  // namespace refhost
