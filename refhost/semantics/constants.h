// Constant integers: an expression has its value when it has been analysed, computed once, in
// its type, as the program would compute it.
#pragma once

#include <cstdint>
#include <optional>

#include "refhost/semantics/arithmetic.h"
#include "refhost/services/typed_constant.h"

namespace refhost {

// The value of an analysed expression of integer literals, values of enumerations, CONSTANT
// variables and the operators + - * / MOD, AND, OR, XOR and NOT; nothing for any other, and for
// a division by 0.
std::optional<TypedConstant> constantOf(const ASTNode& expression);
// The same as a LINT; nothing where none holds it.
std::optional<std::int64_t> constantInteger(const ASTNode& expression);

// The value of an expression of untyped integer literals only: it is the number that it
// computes, and never wraps at the width of its literals. Nothing for other expressions, and for
// a value that no LINT holds.
std::optional<std::int64_t> untypedNumber(const ASTNode& expression);

// What the operator of `expr` makes of its operands, which are constant; nothing where one of
// them is not.
std::optional<TypedConstant> foldUnary(const Expr& expr, BasicDataType result);
std::optional<TypedConstant> foldBinary(const Expr& expr, const Meeting& meeting);

}  // namespace refhost
