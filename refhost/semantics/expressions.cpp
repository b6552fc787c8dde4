#include <utility>

#include "hostkit/literal.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

// The type of a negation: that of an unsigned operand is a signed type.
BasicDataType negationType(BasicDataType type) {
  return isUnsigned(type) ? commonNumber(type, BasicDataType::SInt) : type;
}

// The result type of an operator with operands of `type`: the base type of an enumeration or a
// subrange, since the result may lie outside of it.
vel::SymbolDataType* computedType(vel::SymbolDataType* type) {
  if (const auto* const enumeration = dynamic_cast<const EnumType*>(type)) {
    return enumeration->base;
  }
  const auto* const subrange = dynamic_cast<const SubrangeType*>(type);
  return subrange != nullptr ? subrange->base : type;
}

// The type that is wanted of the operands if `wanted` is that of the result.
const vel::SymbolDataType* wantedOfOperands(const Expr& expr, const vel::SymbolDataType* wanted) {
  const bool computes = expr.kind == ExprKind::Negate || isArithmetic(expr.kind);
  return computes && isFloat(valueType(wanted)) ? wanted : nullptr;
}

bool areOfTwoEnumerations(const Expr& left, const Expr& right) {
  return left.dataType != right.dataType &&
         dynamic_cast<const EnumType*>(left.dataType) != nullptr &&
         dynamic_cast<const EnumType*>(right.dataType) != nullptr;
}

}  // namespace

Expr& Expressions::analyseLeaf(ASTNode& parent, int index, const Type* wanted) {
  Expr& expr = analyseArray(parent, index, wanted);
  if (asOpenArray(expr.dataType) != nullptr && asOpenArray(wanted) == nullptr) {
    say(expr, message::kOpenArray, TreeBuilder::source(expr), displayName(expr.dataType));
    expr.dataType = nullptr;
    expr.setBasicType(BasicDataType::None);
  }
  return expr;
}

Expr& Expressions::analyseArray(ASTNode& parent, int index, const Type* wanted) {
  Expr& expr = *settled(parent, index);
  analyse(expr, wanted);
  return expr;
}

Expr* Expressions::settled(ASTNode& parent, int index) {
  if (parent.leaf(index) != nullptr && becomesAddress(parent, index)) {
    const ASTNode& access = *parent.leaf(index);
    Expr* const address = tree_.make<Expr>(ExprKind::Variable);
    TreeBuilder::setSpan(*address, access.pos(), TreeBuilder::source(access));
    TreeBuilder::setLeaf(parent, index, address);
  }
  return static_cast<Expr*>(parent.leaf(index));
}

Expr& Expressions::analyseTarget(ASTNode& parent, int index) {
  const Seeking seeking(context_, Sought::Place);
  return analyseLeaf(parent, index);
}

// The type of an expression that is of the type `wanted` because of its context; null for others.
vel::SymbolDataType* Expressions::typeAs(Expr& expr, const Type& wanted) {
  if (const Literal* const literal = literalOf(expr)) {
    const LiteralValue& value = literal->value;
    const bool flag = wanted.dataType() == BasicDataType::Bool && isBoolNumber(value);
    const bool real = isFloat(wanted.dataType()) && value.form == LiteralForm::Real &&
                      !value.fixedType && widens(value.type, wanted.dataType());
    return flag || real ? services_.symbols.elementary(wanted.dataType()) : nullptr;
  }
  const auto* const enumeration =
      expr.kind == ExprKind::Variable ? dynamic_cast<const EnumType*>(&wanted) : nullptr;
  if (enumeration == nullptr) return nullptr;
  const std::string_view name = TreeBuilder::source(expr);
  NamedValue* const value = enumeration->value(name);
  if (value == nullptr || parts_.names.variableNamed(name) != nullptr) return nullptr;
  return typeValue(expr, *value);
}

void Expressions::analyse(Expr& expr, const Type* wanted) {
  if (expr.analysed) return;
  expr.analysed = true;
  if (wanted != nullptr) expr.dataType = typeAs(expr, *wanted);
  if (expr.dataType == nullptr) expr.dataType = typeExpression(expr, wanted);
  expr.setBasicType(expr.dataType != nullptr ? expr.dataType->dataType() : BasicDataType::None);
}

// `D10.3` is parsed as a bit of a variable. If no variable has that name, it is a device address.
bool Expressions::becomesAddress(ASTNode& parent, int index) {
  const auto& expr = static_cast<const Expr&>(*parent.leaf(index));
  if (expr.kind != ExprKind::Part || expr.analysed) return false;
  const auto& base = static_cast<const Expr&>(*expr.leaf(0));
  vel::HeapAddress address;
  return base.kind == ExprKind::Variable && services_.usesDeviceLetters() &&
         parts_.names.variableNamed(TreeBuilder::source(base)) == nullptr &&
         services_.memory.parse(TreeBuilder::source(expr), address);
}

vel::SymbolDataType* Expressions::typeExpression(Expr& expr, const Type* wanted) {
  switch (formOf(expr.kind)) {
    case ExprForm::Literal:
      return services_.symbols.dataType(literalOf(expr)->value.typeName);
    case ExprForm::Variable:
      return typeVariable(expr, wanted);
    case ExprForm::Access:
      return typeAccess(expr);
    case ExprForm::Call:
      return typeCall(expr, wanted);
    case ExprForm::Unary:
      return typeUnary(expr, wanted);
    case ExprForm::Arithmetic:
    case ExprForm::Comparison:
    case ExprForm::Logic:
      return typeBinary(expr, wanted);
    case ExprForm::Parts:
      break;
  }
  return nullptr;
}

vel::SymbolDataType* Expressions::typeCall(Expr& expr, const Type* wanted) {
  auto& call = static_cast<Call&>(*expr.leaf(0));
  Type* const type = parts_.calls.analyseCall(call, wanted);
  expr.constant = call.constant;
  parts_.calls.requireValue(call, type);
  return type;
}

vel::SymbolDataType* Expressions::typeUnary(Expr& expr, const Type* wanted) {
  const Expr& operand = analyseLeaf(expr, 0, wantedOfOperands(expr, wanted));
  const BasicDataType type = typeOf(operand);
  if (type == BasicDataType::None) return nullptr;
  const bool fits = expr.kind == ExprKind::Not ? type == BasicDataType::Bool || isInteger(type)
                                               : isNumber(type) || isDuration(type);
  if (!fits) {
    say(operand, message::kOperandType, traitsOf(expr.kind).source, describe(operand));
    return nullptr;
  }
  const bool keeps = expr.kind == ExprKind::Not || negationType(type) == type;
  keepConstant(expr, foldUnary(expr, keeps ? type : negationType(type)));
  if (keeps && operand.dataType != nullptr) return computedType(operand.dataType);
  return services_.symbols.elementary(keeps ? type : negationType(type));
}

void Expressions::keepConstant(Expr& expr, const std::optional<TypedConstant>& value) {
  if (value) expr.constant = tree_.make<TypedConstant>(*value);
}

// Types the left operands of a chain from the inside out, since recursion on a long chain would
// exhaust the stack.
void Expressions::analyseChain(Expr& whole, const Type* wanted) {
  std::vector<std::pair<Expr*, const Type*>> waiting;
  for (Expr* at = &whole; isBinary(*at->leaf(0)); at = static_cast<Expr*>(at->leaf(0))) {
    if (static_cast<const Expr*>(at->leaf(0))->analysed) break;
    wanted = wantedOfOperands(*at, wanted);
    waiting.emplace_back(at, wanted);
  }
  for (; !waiting.empty(); waiting.pop_back()) {
    analyseLeaf(*waiting.back().first, 0, waiting.back().second);
  }
}

vel::SymbolDataType* Expressions::typeBinary(Expr& expr, const Type* wanted) {
  analyseChain(expr, wanted);
  wanted = wantedOfOperands(expr, wanted);
  if (parts_.names.isOpen(*expr.leaf(0))) {
    analyseLeaf(expr, 0, wantedBeside(analyseLeaf(expr, 1, wanted).dataType, wanted));
  }
  const Expr& left = analyseLeaf(expr, 0, wanted);
  const Expr& right = analyseLeaf(expr, 1, wantedBeside(left.dataType, wanted));
  const CommonType common = commonType(expr);
  if (common.kind == CommonType::Kind::Invalid || areOfTwoEnumerations(left, right)) {
    say(expr, message::kOperandTypes, traitsOf(expr.kind).source, describe(left), describe(right));
    return nullptr;
  }
  if (common.kind == CommonType::Kind::Unknown) return nullptr;
  const auto constant = foldBinary(expr, common);
  keepConstant(expr, constant);
  parts_.doubts.judgeBinary(expr, common);
  if (constant && constant->isUntyped()) return services_.symbols.elementary(constant->type());
  // An operand of the result's type passes its type name on: BYTE AND BYTE is a BYTE.
  for (const Expr* const side : {&left, &right}) {
    const bool same = typeOf(*side) == common.result && literalOf(*side) == nullptr;
    if (!same || side->dataType == nullptr) continue;
    // A computed address is none that a REF_TO can hold.
    const auto* const pointer = dynamic_cast<const PointerType*>(side->dataType);
    const bool reference = pointer != nullptr && pointer->isReference;
    return reference ? services_.symbols.pointerType(pointer->target, false)
                     : computedType(side->dataType);
  }
  return services_.symbols.elementary(common.result);
}

}  // namespace refhost
