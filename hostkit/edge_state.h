// The hidden variables in which the edge operators MEP and MEF store their condition.
#pragma once

#include <string>

#include "host/ast.h"
#include "hostkit/device_map.h"
#include "hostkit/symbol_table.h"

namespace hostkit {

// The name of the variable in which a call of MEP or MEF stores its condition until the next
// scan; empty for calls of other operators. Calls with the same source text share it.
std::string edgeStateName(const vel::ASTNode& invocation);

// Declares that variable as a BOOL of `unit` and allocates a byte of `memory` for it, which units
// with their state in device memory use. To be called between check and generate, which looks the
// variable up. Does nothing for calls of other operators. A host with its own symbol table declares
// a variable of that name itself.
void declareEdgeState(SymbolTable& symbols, DeviceMap& memory, const std::string& unit,
                      const vel::ASTNode& invocation);

}  // namespace hostkit
