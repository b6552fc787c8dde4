#include "refhost/semantics/constants.h"

#include <limits>

#include "hostkit/literal.h"

namespace refhost {
namespace {

using Number = std::optional<std::int64_t>;

constexpr auto kLowest = std::numeric_limits<std::int64_t>::min();
constexpr std::uint64_t kSign = std::uint64_t{1} << 63;

std::optional<TypedConstant> literalConstant(const LiteralValue& literal) {
  if (literal.form != LiteralForm::Integer) return {};
  const std::uint64_t bits = literal.negative ? 0 - literal.magnitude : literal.magnitude;
  const bool holds = literal.negative ? literal.magnitude <= kSign : literal.magnitude < kSign;
  if (literal.fixedType || !holds) return TypedConstant(bits, literal.type);
  return TypedConstant::untyped(static_cast<std::int64_t>(bits), literal.type);
}

// Computes untyped numbers; empty when the result exceeds LINT.
Number compute(ExprKind op, std::int64_t a, std::int64_t b) {
  std::int64_t result = 0;
  if (op == ExprKind::Add) return __builtin_add_overflow(a, b, &result) ? Number() : result;
  if (op == ExprKind::Subtract) return __builtin_sub_overflow(a, b, &result) ? Number() : result;
  if (op == ExprKind::Multiply) return __builtin_mul_overflow(a, b, &result) ? Number() : result;
  if (b == 0 || (a == kLowest && b == -1)) return {};
  if (op == ExprKind::Divide) return a / b;
  if (op == ExprKind::Modulo) return a % b;
  return {};
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
BasicDataType typeThatHolds(std::int64_t value, BasicDataType wanted) {
  const TypedConstant constant(static_cast<std::uint64_t>(value), BasicDataType::LInt);
  for (const BasicDataType type :
       {wanted, BasicDataType::SInt, BasicDataType::Int, BasicDataType::DInt}) {
    if (constant.fits(type)) return type;
  }
  return BasicDataType::LInt;
}

}  // namespace

std::optional<TypedConstant> constantOf(const ASTNode& expression) {
  if (expression.type() != vel::ASTType::Expression) return {};
  const auto& expr = static_cast<const Expr&>(expression);
  if (const Literal* const literal = literalOf(expr)) return literalConstant(literal->value);
  if (expr.constant != nullptr) return *expr.constant;
  return {};
}

std::optional<std::int64_t> constantInteger(const ASTNode& expression) {
  const auto constant = constantOf(expression);
  return constant ? constant->asLInt() : std::nullopt;
}

std::optional<std::int64_t> untypedNumber(const ASTNode& expression) {
  const auto constant = constantOf(expression);
  return constant && constant->isUntyped() ? constant->asLInt() : std::nullopt;
}

std::optional<TypedConstant> foldUnary(const Expr& expr, BasicDataType result) {
  const auto operand = constantOf(*expr.leaf(0));
  if (!operand || !isInteger(result)) return {};
  if (expr.kind == ExprKind::Not) return TypedConstant(~operand->bits(), result);
  if (operand->isUntyped()) {
    const Number number =
        compute(ExprKind::Subtract, 0, static_cast<std::int64_t>(operand->bits()));
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
    const Number number = compute(expr.kind, static_cast<std::int64_t>(left->bits()),
                                  static_cast<std::int64_t>(right->bits()));
    if (number) return TypedConstant::untyped(*number, typeThatHolds(*number, common.result));
  }
  const BasicDataType type = common.operands;
  const auto bits = computeIn(type, expr.kind, TypedConstant(left->bits(), type).bits(),
                              TypedConstant(right->bits(), type).bits());
  return bits ? std::optional(TypedConstant(*bits, common.result)) : std::nullopt;
}

}  // namespace refhost
