// Which argument of a call belongs to which parameter.
#pragma once

#include <vector>

#include "refhost/services/unit_symbol.h"
#include "refhost/syntax/tree.h"

namespace refhost {

struct Binding {
  VarSymbol* parameter = nullptr;   // null when there is none for the argument
  ASTNode* node = nullptr;          // the argument as it stands in the list
  Expr* value = nullptr;            // what it gives, or for an output where it goes
  const Argument* named = nullptr;  // null for a positional argument
};

// How many arguments of a parameter list are named.
int namedArguments(const ASTNode& list);

// One binding for each argument, in source order. Positions count the inputs and
// in-out parameters.
std::vector<Binding> bindArguments(const Call& call, const UnitSymbol& unit);

}  // namespace refhost
