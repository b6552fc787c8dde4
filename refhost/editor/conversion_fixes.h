// Conversions that are missing where a type is refused, or converted with a warning.
#pragma once

#include <vector>

#include "refhost/diagnostic.h"
#include "refhost/editor/analysed_program.h"

namespace refhost {

// Adds conversions by operators, `REAL_TO_INT(...)`, after which the message is gone. The types are
// those that the message names, and the value is the node at its place, so that messages of
// operators need no support of theirs.
void addConversions(const AnalysedProgram& program, const Diagnostic& message,
                    std::vector<Fix>& fixes);

}  // namespace refhost
