// The memory of the edge operators, MEP and MEF.
#pragma once

#include <string>

#include "host/ast.h"
#include "hostkit/symbol_table.h"

namespace hostkit {

// The name of the variable in which a call of MEP or MEF keeps its condition until the next
// scan; empty for calls of other operators. Calls of the same text share it.
std::string edgeStateName(const vel::ASTNode& invocation);

// Declares that variable as a BOOL of `unit`, in which a call that check has accepted stands:
// generate looks it up there. Does nothing for calls of other operators.
void declareEdgeState(SymbolTable& symbols, const std::string& unit,
                      const vel::ASTNode& invocation);

}  // namespace hostkit
