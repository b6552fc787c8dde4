// The types that the surroundings of an expression ask for.
#pragma once

#include "refhost/editor/analysed_program.h"

namespace refhost {

// The type that a value or a variable at the place of `value` ought to have: that of the variable
// to which it is assigned, of the parameter for which it is passed, of the other operand, BOOL for
// a condition. Null if the surroundings do not tell.
const vel::SymbolDataType* expectedType(const Services& services, const ASTNode& value);

// The type of a variable that could hold the value: of an untyped number INT, REAL or, if it is too
// large for these, the type that holds it. Null if the value has no type.
const vel::SymbolDataType* typeHolding(const Services& services, const ASTNode& value);

}  // namespace refhost
