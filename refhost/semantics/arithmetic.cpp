#include "refhost/semantics/arithmetic.h"

#include "core/operator.h"
#include "hostkit/literal.h"
#include "refhost/services/derived_types.h"
#include "refhost/syntax/parser.h"

namespace refhost {
namespace {

using Kind = CommonType::Kind;

bool isPointInTime(BasicDataType type) {
  return type == BasicDataType::Date || type == BasicDataType::TimeOfDay ||
         type == BasicDataType::DateAndTime;
}

// The type of an untyped literal as an operand beside one of type `other`: `other` if that type
// holds it, else `own`.
BasicDataType literalTypeBeside(const ASTNode& node, BasicDataType own, BasicDataType other) {
  const Literal* const literal = literalOf(node);
  if (literal == nullptr || literal->value.fixedType || !isNumber(other)) return own;
  const LiteralValue& value = literal->value;
  if (value.form == LiteralForm::Integer) {
    return integerFits(value.negative, value.magnitude, other) ? other : own;
  }
  return widens(own, other) ? other : own;
}

bool canBeBool(BasicDataType type) {
  return type == BasicDataType::Bool || type == BasicDataType::None;
}

BasicDataType knownType(const ASTNode& operand) {
  if (operand.type() != vel::ASTType::Expression) return BasicDataType::None;
  return valueType(static_cast<const Expr&>(operand).dataType);
}

// The result type of an operator that names none: the common type of the values among which it
// chooses, else BOOL.
BasicDataType chosenType(const Call& call) {
  if (!call.traits()->chooses()) return BasicDataType::Bool;
  const ASTNode& list = *call.leaf(1);
  const int first = call.traits()->firstChoice;
  BasicDataType chosen = likelyType(*list.leaf(first));
  for (int i = first + 1; i < list.leavesCount(); ++i) {
    const BasicDataType other = likelyType(*list.leaf(i));
    if (isNumber(chosen) && isNumber(other)) {
      chosen = commonNumber(chosen, other);
    } else if (!widens(other, chosen)) {
      chosen = other;
    }
  }
  return chosen;
}

CommonType commonTimeType(ExprKind op, BasicDataType left, BasicDataType right) {
  const bool sum = op == ExprKind::Add || op == ExprKind::Subtract;
  if (isDuration(left) && isDuration(right) && (sum || isComparison(op))) {
    const BasicDataType wider = widens(left, right) ? right : left;
    return {Kind::Durations, wider, wider};
  }
  if (isDuration(left) && isNumber(right) && (op == ExprKind::Multiply || op == ExprKind::Divide)) {
    return {Kind::Scale, left, left};
  }
  if (isNumber(left) && isDuration(right) && op == ExprKind::Multiply) {
    return {Kind::Scale, right, right};
  }
  const bool clock = left == BasicDataType::TimeOfDay || left == BasicDataType::DateAndTime;
  if (clock && isDuration(right) && sum) return {Kind::Shift, left, left};
  if (isPointInTime(left) && left == right && op == ExprKind::Subtract) {
    return {Kind::Difference, left, BasicDataType::Time};
  }
  return {};
}

CommonType commonPointerType(ExprKind op, BasicDataType left, BasicDataType right) {
  constexpr BasicDataType kPointer = BasicDataType::Pointer;
  const bool two = left == kPointer && right == kPointer;
  if (!two && !isInteger(left == kPointer ? right : left)) return {};
  if (isComparison(op)) return {Kind::Pointers, kPointer, BasicDataType::Bool};
  if (two && op == ExprKind::Subtract) return {Kind::Distance, kPointer, BasicDataType::DInt};
  const bool step = op == ExprKind::Add || (op == ExprKind::Subtract && left == kPointer);
  return step && !two ? CommonType{Kind::Step, kPointer, kPointer} : CommonType{};
}

}  // namespace

BasicDataType typeOf(const ASTNode& operand) {
  const BasicDataType known = knownType(operand);
  if (known != BasicDataType::None) return known;
  const BasicDataType likely = likelyType(operand);
  return likely == BasicDataType::Bool || isText(likely) ? known : likely;
}

namespace {

BasicDataType likelyType(const ASTNode& value, int depth) {
  if (kindOf(value) == NodeKind::Invocation) {
    const auto& call = static_cast<const Call&>(value);
    if (call.dataType != nullptr) return valueType(call.dataType);
    return call.op() != nullptr && call.accepted ? chosenType(call) : BasicDataType::None;
  }
  const BasicDataType known = knownType(value);
  if (known != BasicDataType::None || value.type() != vel::ASTType::Expression) return known;
  const auto& expr = static_cast<const Expr&>(value);
  if (expr.kind != ExprKind::Call && !isArithmetic(expr.kind) &&
      formOf(expr.kind) != ExprForm::Logic)
    return known;
  // The search ends here, since the operands at the start of so long a chain add nothing.
  if (depth > kMaxNesting) return BasicDataType::None;
  const BasicDataType first = likelyType(*expr.leaf(0), depth + 1);
  const bool second = first == BasicDataType::None && expr.leavesCount() > 1;
  return second ? likelyType(*expr.leaf(1), depth + 1) : first;
}

}  // namespace

BasicDataType likelyType(const ASTNode& value) { return likelyType(value, 0); }

const Literal* literalOf(const ASTNode& node) {
  if (node.type() != vel::ASTType::Expression) return nullptr;
  const auto& expr = static_cast<const Expr&>(node);
  return expr.kind == ExprKind::Literal ? static_cast<const Literal*>(expr.leaf(0)) : nullptr;
}

CommonType commonType(const Expr& binary) {
  const ExprKind op = binary.kind;
  const ASTNode& leftNode = *binary.leaf(0);
  const ASTNode& rightNode = *binary.leaf(1);
  BasicDataType left = typeOf(leftNode);
  BasicDataType right = typeOf(rightNode);
  const bool stopsEarly = op == ExprKind::AndThen || op == ExprKind::OrElse;
  if (stopsEarly && !(canBeBool(left) && canBeBool(right))) return {};
  const auto result = [op](Kind kind, BasicDataType operands) {
    return CommonType{kind, operands, isComparison(op) ? BasicDataType::Bool : operands};
  };

  if (left == BasicDataType::None || right == BasicDataType::None) {
    const BasicDataType first = likelyType(leftNode);
    const BasicDataType second = likelyType(rightNode);
    const bool known = first != BasicDataType::None && second != BasicDataType::None;
    if (known && (isText(first) || isText(second))) {
      return first == second && isComparison(op) ? result(Kind::Strings, first) : CommonType{};
    }
    return result(Kind::Untyped, left != BasicDataType::None ? left : right);
  }
  if (isNumber(left) && isNumber(right)) {
    const BasicDataType leftBeside = literalTypeBeside(leftNode, left, right);
    right = literalTypeBeside(rightNode, right, left);
    left = leftBeside;
    const BasicDataType common = commonNumber(left, right);
    if (isComparison(op)) return result(Kind::Number, common);
    if (op == ExprKind::Power) {
      const BasicDataType power =
          left == BasicDataType::Real ? BasicDataType::Real : BasicDataType::LReal;
      return result(Kind::Number, power);
    }
    if (isArithmetic(op)) {
      return op == ExprKind::Modulo && isFloat(common) ? CommonType{}
                                                       : result(Kind::Number, common);
    }
    return isFloat(common) ? CommonType{} : result(Kind::Bits, common);
  }
  if (left == BasicDataType::Bool && right == BasicDataType::Bool) {
    return isArithmetic(op) ? CommonType{} : result(Kind::Logic, left);
  }
  if (isText(left) || isText(right)) {
    return left == right && isComparison(op) ? result(Kind::Strings, left) : CommonType{};
  }
  if (left == BasicDataType::Pointer || right == BasicDataType::Pointer) {
    return commonPointerType(op, left, right);
  }
  const CommonType times = commonTimeType(op, left, right);
  if (times.kind != Kind::Invalid) {
    return isComparison(op) ? result(times.kind, times.operands) : times;
  }
  const bool comparable = left == right && left < BasicDataType::Derived;
  return comparable && isComparison(op) ? result(Kind::Same, left) : CommonType{};
}

}  // namespace refhost
