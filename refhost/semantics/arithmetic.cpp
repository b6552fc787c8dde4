#include "refhost/semantics/arithmetic.h"

#include "core/operator.h"
#include "hostkit/literal.h"
#include "refhost/semantics/constants.h"
#include "refhost/services/derived_types.h"
#include "refhost/syntax/parser.h"

namespace refhost {
namespace {

using CommonKind = CommonType::Kind;

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
  return widens(value.type, other) ? other : own;
}

// True of NULL, which is no number.
bool isNullName(const ASTNode& node) {
  const auto* const type =
      dynamic_cast<const PointerType*>(static_cast<const Expr&>(node).dataType);
  return type != nullptr && type->target == nullptr;
}

CommonType commonTimeType(ExprKind op, BasicDataType left, BasicDataType right) {
  const bool sum = op == ExprKind::Add || op == ExprKind::Subtract;
  if (isDuration(left) && isDuration(right) && (sum || isComparison(op))) {
    const BasicDataType wider = widens(left, right) ? right : left;
    return {CommonKind::Durations, wider, wider};
  }
  if (isDuration(left) && isNumber(right) && (op == ExprKind::Multiply || op == ExprKind::Divide)) {
    return {CommonKind::Scale, left, left};
  }
  if (isNumber(left) && isDuration(right) && op == ExprKind::Multiply) {
    return {CommonKind::Scale, right, right};
  }
  const bool clock = left == BasicDataType::TimeOfDay || left == BasicDataType::DateAndTime;
  if (clock && isDuration(right) && sum) return {CommonKind::Shift, left, left};
  if (isPointInTime(left) && left == right && op == ExprKind::Subtract) {
    return {CommonKind::Difference, left, BasicDataType::Time};
  }
  return {};
}

CommonType commonPointerType(ExprKind op, BasicDataType left, BasicDataType right) {
  constexpr BasicDataType kPointer = BasicDataType::Pointer;
  const bool two = left == kPointer && right == kPointer;
  if (!two && !isInteger(left == kPointer ? right : left)) return {};
  if (isComparison(op)) return {CommonKind::Pointers, kPointer, BasicDataType::Bool};
  if (two && op == ExprKind::Subtract) return {CommonKind::Distance, kPointer, BasicDataType::DInt};
  const bool step = op == ExprKind::Add || (op == ExprKind::Subtract && left == kPointer);
  return step && !two ? CommonType{CommonKind::Step, kPointer, kPointer} : CommonType{};
}

}  // namespace

const vel::SymbolDataType* wantedBeside(const vel::SymbolDataType* other,
                                        const vel::SymbolDataType* wanted) {
  return isFloat(valueType(wanted)) && isInteger(valueType(other)) ? wanted : other;
}

BasicDataType typeOf(const ASTNode& value) {
  if (value.type() == vel::ASTType::Expression) {
    return valueType(static_cast<const Expr&>(value).dataType);
  }
  const bool call = kindOf(value) == NodeKind::Invocation;
  return call ? valueType(static_cast<const Call&>(value).dataType) : BasicDataType::None;
}

const Literal* literalOf(const ASTNode& node) {
  if (node.type() != vel::ASTType::Expression) return nullptr;
  const auto& expr = static_cast<const Expr&>(node);
  return expr.kind == ExprKind::Literal ? static_cast<const Literal*>(expr.leaf(0)) : nullptr;
}

bool isUntypedNumber(const ASTNode& value) {
  if (const Literal* const literal = literalOf(value)) {
    return !literal->value.fixedType && isNumber(literal->value.type);
  }
  if (untypedNumber(value)) return true;
  const bool expression = value.type() == vel::ASTType::Expression;
  const ASTNode* const callee =
      expression && static_cast<const Expr&>(value).kind == ExprKind::Call ? value.leaf(0) : &value;
  if (kindOf(*callee) != NodeKind::Invocation) return false;
  const auto& call = static_cast<const Call&>(*callee);
  const ASTNode* const list = call.op() != nullptr ? call.parameters() : nullptr;
  const bool passes = list != nullptr && (call.traits()->chooses() ||
                                          call.traits()->result == OperatorTraits::Result::Passed);
  for (int i = passes ? call.traits()->firstChoice : 0; passes && i < list->leavesCount(); ++i) {
    if (!isUntypedNumber(*list->leaf(i))) return false;
  }
  return passes;
}

std::string describe(const ASTNode& value, const vel::SymbolDataType* type) {
  constexpr std::size_t kLongest = 60;
  const std::string_view text = vel::TreeBuilder::source(value);
  const bool quoted = isUntypedNumber(value) && text.size() <= kLongest &&
                      text.find('\n') == std::string_view::npos;
  return quoted ? std::string(text) : displayName(type);
}

CommonType commonType(const Expr& binary) {
  const ExprKind op = binary.kind;
  const ASTNode& leftNode = *binary.leaf(0);
  const ASTNode& rightNode = *binary.leaf(1);
  BasicDataType left = typeOf(leftNode);
  BasicDataType right = typeOf(rightNode);
  if (left == BasicDataType::None || right == BasicDataType::None) return {CommonKind::Unknown};
  const bool stopsEarly = op == ExprKind::AndThen || op == ExprKind::OrElse;
  if (stopsEarly && !(left == BasicDataType::Bool && right == BasicDataType::Bool)) return {};
  const auto result = [op](CommonKind kind, BasicDataType operands) {
    return CommonType{kind, operands, isComparison(op) ? BasicDataType::Bool : operands};
  };
  if (isNumber(left) && isNumber(right)) {
    const BasicDataType leftBeside = literalTypeBeside(leftNode, left, right);
    right = literalTypeBeside(rightNode, right, left);
    left = leftBeside;
    const BasicDataType common = commonNumber(left, right);
    if (isComparison(op)) return result(CommonKind::Number, common);
    if (op == ExprKind::Power) {
      const BasicDataType power =
          left == BasicDataType::Real ? BasicDataType::Real : BasicDataType::LReal;
      return result(CommonKind::Number, power);
    }
    if (isArithmetic(op)) {
      return op == ExprKind::Modulo && isFloat(common) ? CommonType{}
                                                       : result(CommonKind::Number, common);
    }
    return isFloat(common) ? CommonType{} : result(CommonKind::Bits, common);
  }
  if (left == BasicDataType::Bool && right == BasicDataType::Bool) {
    return isArithmetic(op) ? CommonType{} : result(CommonKind::Logic, left);
  }
  if (isText(left) || isText(right)) {
    return left == right && isComparison(op) ? result(CommonKind::Strings, left) : CommonType{};
  }
  if (left == BasicDataType::Pointer || right == BasicDataType::Pointer) {
    if (isInteger(left) ? isNullName(rightNode) : isInteger(right) && isNullName(leftNode))
      return {};
    return commonPointerType(op, left, right);
  }
  const CommonType times = commonTimeType(op, left, right);
  if (times.kind != CommonKind::Invalid) {
    return isComparison(op) ? result(times.kind, times.operands) : times;
  }
  const bool comparable = left == right && left < BasicDataType::Derived;
  return comparable && isComparison(op) ? result(CommonKind::Same, left) : CommonType{};
}

}  // namespace refhost
