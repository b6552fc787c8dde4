// What operators share when they write C text.
#pragma once

#include <string>

#include "host/generator.h"

namespace vel {

// The text operations of a generator.
GenClanAPI* clanApi(Generator* gen);

// Appends the leaves of `parameterList` to `out`, each in parentheses: `(a), (b)`.
// Nothing for a list that is empty or missing.
void genArgs(Generator* gen, ASTNode* parameterList, std::string& out);

}  // namespace vel
