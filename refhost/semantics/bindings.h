// Binds the arguments of a call to the parameters of the callee.
#pragma once

#include <vector>

#include "refhost/services/unit_symbol.h"
#include "refhost/syntax/tree.h"

namespace refhost {

struct Binding {
  VarSymbol* parameter = nullptr;   // null when the argument matches no parameter
  int index = 0;                    // of the argument in the list
  ASTNode* node = nullptr;          // the leaf of the parameter list
  Expr* value = nullptr;            // the actual argument; of an output, the target
  const Argument* named = nullptr;  // null for a positional argument
};

// The number of named arguments in a parameter list.
int namedArguments(const ASTNode& list);

// One binding for each argument, in source order. Positional arguments are bound to the inputs and
// in-out parameters in order of declaration, or to all parameters, outputs included, if there are
// more of them than inputs and in-out parameters.
std::vector<Binding> bindArguments(const Call& call, const UnitSymbol& unit);

}  // namespace refhost
