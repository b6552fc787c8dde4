#include "refhost/semantics/constants.h"

#include <cmath>

#include "hostkit/literal.h"
#include "hostkit/operator_traits.h"
#include "refhost/services/derived_types.h"

namespace refhost {
namespace {

constexpr std::uint64_t kSign = std::uint64_t{1} << 63;

std::optional<TypedConstant> literalConstant(const LiteralValue& literal) {
  if (literal.form != LiteralForm::Integer || !isInteger(literal.type)) return {};
  const std::uint64_t bits = literal.negative ? 0 - literal.magnitude : literal.magnitude;
  const bool holds = literal.negative ? literal.magnitude <= kSign : literal.magnitude < kSign;
  if (literal.fixedType || !holds) return TypedConstant(bits, literal.type);
  return TypedConstant::untyped(static_cast<std::int64_t>(bits), literal.type);
}

// Computes untyped numbers of type LINT; empty when the result exceeds LINT.
std::optional<std::int64_t> compute(ExprKind op, Integer a, Integer b) {
  Integer result = 0;
  if (op == ExprKind::Add) {
    result = a + b;
  } else if (op == ExprKind::Subtract) {
    result = a - b;
  } else if (op == ExprKind::Multiply) {
    result = a * b;
  } else if (b != 0 && op == ExprKind::Divide) {
    result = a / b;
  } else if (b != 0 && op == ExprKind::Modulo) {
    result = a % b;
  } else {
    return {};
  }
  return fits(result, BasicDataType::LInt) ? std::optional(static_cast<std::int64_t>(result))
                                           : std::nullopt;
}

// Computes in `type`, to which both operands have been converted. A division by -1 wraps as in the
// runtime's functions.
std::optional<std::uint64_t> computeIn(BasicDataType type, ExprKind op, std::uint64_t a,
                                       std::uint64_t b) {
  const auto left = static_cast<std::int64_t>(a);
  const auto right = static_cast<std::int64_t>(b);
  if (op == ExprKind::Add) return a + b;
  if (op == ExprKind::Subtract) return a - b;
  if (op == ExprKind::Multiply) return a * b;
  if (op == ExprKind::And) return a & b;
  if (op == ExprKind::Or) return a | b;
  if (op == ExprKind::Xor) return a ^ b;
  const bool divides = op == ExprKind::Divide;
  if (b == 0 || (!divides && op != ExprKind::Modulo)) return {};
  if (!isSigned(type)) return divides ? a / b : a % b;
  if (right == -1) return divides ? 0 - a : 0;
  return static_cast<std::uint64_t>(divides ? left / right : left % right);
}

// `wanted` if it holds the value, else the smallest signed type that does.
BasicDataType typeThatHolds(Integer value, BasicDataType wanted) {
  for (const BasicDataType type :
       {wanted, BasicDataType::SInt, BasicDataType::Int, BasicDataType::DInt}) {
    if (fits(value, type)) return type;
  }
  return BasicDataType::LInt;
}

// The value of a real literal, with or without a sign in front of it.
std::optional<double> realConstant(const ASTNode& node) {
  if (const Literal* const literal = literalOf(node)) {
    return literal->value.form == LiteralForm::Real ? std::optional(literal->value.real)
                                                    : std::nullopt;
  }
  if (node.type() != vel::ASTType::Expression) return {};
  const auto& expr = static_cast<const Expr&>(node);
  const auto value = expr.kind == ExprKind::Negate ? realConstant(*expr.leaf(0)) : std::nullopt;
  return value ? std::optional(-*value) : std::nullopt;
}

}  // namespace

std::optional<TypedConstant> constantOf(const ASTNode& expression) {
  if (kindOf(expression) == NodeKind::Invocation) {
    const TypedConstant* const known = static_cast<const Call&>(expression).constant;
    return known != nullptr ? std::optional(*known) : std::nullopt;
  }
  if (expression.type() != vel::ASTType::Expression) return {};
  const auto& expr = static_cast<const Expr&>(expression);
  if (const Literal* const literal = literalOf(expr)) return literalConstant(literal->value);
  if (expr.constant != nullptr) return *expr.constant;
  return {};
}

std::optional<Integer> constantInteger(const ASTNode& expression) {
  const auto constant = constantOf(expression);
  return constant ? std::optional(constant->value()) : std::nullopt;
}

bool isConstant(const ASTNode& expression) {
  return literalOf(expression) != nullptr || constantOf(expression).has_value();
}

// TRUNC drops the fraction, the others round.
bool convertsOutOfRange(const Call& conversion) {
  const OperatorFamily family = conversion.traits()->family;
  const bool truncates = family == OperatorFamily::Truncation;
  if (!truncates && family != OperatorFamily::Conversion &&
      family != OperatorFamily::GenericConversion) {
    return false;
  }
  const ASTNode* const operands = conversion.parameters();
  const BasicDataType type = valueType(conversion.dataType);
  if (operands == nullptr || operands->leavesCount() == 0 || !isInteger(type)) return false;
  const auto given = realConstant(*operands->leaf(0));
  if (!given) return false;
  const double value = truncates ? std::trunc(*given) : std::round(*given);
  const int bits = 8 * elementaryType(type)->size;
  const double end = std::ldexp(1.0, isSigned(type) ? bits - 1 : bits);
  return value >= end || value < (isSigned(type) ? -end : 0.0);
}

bool isNull(const Expr& expr) {
  const auto* const pointer = dynamic_cast<const PointerType*>(expr.dataType);
  return pointer != nullptr ? pointer->target == nullptr : untypedNumber(expr) == 0;
}

std::optional<std::int64_t> untypedNumber(const ASTNode& expression) {
  const auto constant = constantOf(expression);
  if (!constant || !constant->isUntyped()) return {};
  return static_cast<std::int64_t>(constant->bits());
}

std::optional<TypedConstant> foldUnary(const Expr& expr, BasicDataType result) {
  const auto operand = constantOf(*expr.leaf(0));
  if (!operand || !isInteger(result)) return {};
  if (expr.kind == ExprKind::Not) return TypedConstant(~operand->bits(), result);
  if (operand->isUntyped()) {
    const auto number = compute(ExprKind::Subtract, 0, operand->value());
    if (number) return TypedConstant::untyped(*number, typeThatHolds(*number, result));
  }
  return TypedConstant(0 - operand->bits(), result);
}

std::optional<TypedConstant> foldBinary(const Expr& expr, const CommonType& common) {
  using Kind = CommonType::Kind;
  if ((common.kind != Kind::Number && common.kind != Kind::Bits) || !isInteger(common.result)) {
    return {};
  }
  const auto left = constantOf(*expr.leaf(0));
  const auto right = left ? constantOf(*expr.leaf(1)) : std::nullopt;
  if (!right) return {};
  if (left->isUntyped() && right->isUntyped()) {
    const auto number = compute(expr.kind, left->value(), right->value());
    if (number) return TypedConstant::untyped(*number, typeThatHolds(*number, common.result));
  }
  const BasicDataType type = common.operands;
  const auto bits = computeIn(type, expr.kind, TypedConstant(left->bits(), type).bits(),
                              TypedConstant(right->bits(), type).bits());
  return bits ? std::optional(TypedConstant(*bits, common.result)) : std::nullopt;
}

}  // namespace refhost
