#include "refhost/semantics/constants.h"

#include <limits>

#include "hostkit/literal.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/services/derived_types.h"

namespace refhost {
namespace {

using Value = std::optional<std::int64_t>;

constexpr auto kLowest = std::numeric_limits<std::int64_t>::min();

Value literalInteger(const LiteralValue& literal) {
  if (literal.form != LiteralForm::Integer) return {};
  constexpr std::uint64_t kLimit = std::uint64_t{1} << 63;
  if (literal.negative) {
    if (literal.magnitude > kLimit) return {};
    return literal.magnitude == kLimit ? kLowest : -static_cast<std::int64_t>(literal.magnitude);
  }
  if (literal.magnitude >= kLimit) return {};
  return static_cast<std::int64_t>(literal.magnitude);
}

Value apply(Expression::Operator op, std::int64_t a, std::int64_t b) {
  std::int64_t result = 0;
  switch (static_cast<int>(op)) {
    case op::kAdd:
      return __builtin_add_overflow(a, b, &result) ? Value() : result;
    case op::kSubtract:
      return __builtin_sub_overflow(a, b, &result) ? Value() : result;
    case op::kMultiply:
      return __builtin_mul_overflow(a, b, &result) ? Value() : result;
    case op::kDivide:
      return b == 0 || (a == kLowest && b == -1) ? Value() : a / b;
    case op::kModulo:
      return b == 0 || (a == kLowest && b == -1) ? Value() : a % b;
    default:
      return {};
  }
}

// CONSTANT variables may name each other, in a circle too.
Value evaluate(const ASTNode& node, int depth) {
  constexpr int kMaxDepth = 4000;
  if (depth > kMaxDepth || node.type() != vel::ASTType::Expression) return {};
  const auto& expr = static_cast<const Expr&>(node);
  if (const Literal* const literal = literalOf(expr)) return literalInteger(literal->value);
  if (expr.literalSum != nullptr) return *expr.literalSum;
  if (const auto* const named = dynamic_cast<const NamedValue*>(expr.symbol)) return named->value;
  if (expr.op() == Expression::Variable) {
    const auto* const variable = asVariable(expr.symbol);
    const bool known = variable != nullptr && variable->constant && variable->initial != nullptr;
    return known ? evaluate(*variable->initial, depth + 1) : Value();
  }
  if (expr.op() == op::kNegate) {
    const Value operand = evaluate(*expr.leaf(0), depth + 1);
    return operand ? apply(op::kSubtract, 0, *operand) : operand;
  }
  if (!isArithmetic(expr.op())) return {};
  const Value left = evaluate(*expr.leaf(0), depth + 1);
  const Value right = left ? evaluate(*expr.leaf(1), depth + 1) : Value();
  return right ? apply(expr.op(), *left, *right) : Value();
}

}  // namespace

std::optional<std::int64_t> constantInteger(const ASTNode& expression) {
  return evaluate(expression, 0);
}

std::optional<std::uint64_t> constantAboveLInt(const ASTNode& expression) {
  const Literal* const literal = literalOf(expression);
  const bool above = literal != nullptr && literal->value.form == LiteralForm::Integer &&
                     !literal->value.negative && literal->value.magnitude >> 63 != 0;
  return above ? std::optional(literal->value.magnitude) : std::nullopt;
}

}  // namespace refhost
