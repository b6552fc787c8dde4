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

// The type of the operand at a position of the call of an operator or a standard function, if it
// depends neither on the other operands nor on the result; null if it does.
const vel::SymbolDataType* operandType(const Services& services, const Call& call, int index);

}  // namespace refhost
