// Constant folding of integers. An expression is folded once, when it is analysed, in its type and
// with the wrapping that the program would have.
#pragma once

#include <optional>

#include "refhost/semantics/arithmetic.h"
#include "refhost/services/typed_constant.h"

namespace refhost {

// The value of an analysed expression of integer literals, values of enumerations, CONSTANT
// variables and the operators + - * / MOD, AND, OR, XOR and NOT. Empty for other expressions and
// for a division by 0.
std::optional<TypedConstant> constantOf(const ASTNode& expression);
// The same without its type.
std::optional<Integer> constantInteger(const ASTNode& expression);

// True of a literal and of an expression whose value constantOf() knows.
bool isConstant(const ASTNode& expression);

// The value of an expression of untyped integer literals only, which does not wrap at the width of
// a type. Empty for other expressions and when the value exceeds LINT.
std::optional<std::int64_t> untypedNumber(const ASTNode& expression);

// The operator of `expr` applied to its operands; empty when one of them is not constant.
std::optional<TypedConstant> foldUnary(const Expr& expr, BasicDataType result);
std::optional<TypedConstant> foldBinary(const Expr& expr, const CommonType& common);

// True of a conversion of a constant real number to an integer type that does not hold it.
bool convertsOutOfRange(const Call& conversion);

// True of NULL and of the number 0.
bool isNull(const Expr& expr);

}  // namespace refhost
