// Arguments that are missing, or whose names are.
#pragma once

#include <vector>

#include "refhost/diagnostic.h"
#include "refhost/editor/analysed_program.h"

namespace refhost {

// Adds the names of positional arguments where these follow named ones, and arguments that are
// missing with the default value of their type.
void addArguments(const AnalysedProgram& program, const Diagnostic& message,
                  std::vector<Fix>& fixes);

// Adds the sign that gives a parameter where the program compares with its name. False if that is
// not what the message is about.
bool addNamings(const AnalysedProgram& program, const Diagnostic& message, std::vector<Fix>& fixes);

}  // namespace refhost
