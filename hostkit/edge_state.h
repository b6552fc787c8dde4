// The memory of the edge operators, MEP and MEF.
#pragma once

#include <string>

#include "host/ast.h"
#include "hostkit/device_map.h"
#include "hostkit/symbol_table.h"

namespace hostkit {

// The name of the variable in which a call of MEP or MEF keeps its condition until the next
// scan; empty for calls of other operators. Calls of the same text share it.
std::string edgeStateName(const vel::ASTNode& invocation);

// Declares that variable as a BOOL of `unit`, with a byte of `memory` behind its areas for units
// that keep their state there; to be called between check and generate, which looks it up. Does
// nothing for calls of other operators. Hosts with a symbol table of their own declare a variable
// of that name themselves.
void declareEdgeState(SymbolTable& symbols, DeviceMap& memory, const std::string& unit,
                      const vel::ASTNode& invocation);

}  // namespace hostkit
