#include "refhost/semantics/analyser.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"
#include "refhost/syntax/literal.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

// A signed type that holds the negative of an unsigned one.
BasicDataType negated(BasicDataType type) {
  return isUnsigned(type) ? commonNumber(type, BasicDataType::SInt) : type;
}

// `wanted` where it holds the value, else the smallest signed type that does.
BasicDataType typeThatHolds(std::int64_t value, BasicDataType wanted) {
  const auto bits = static_cast<std::uint64_t>(value);
  const std::uint64_t magnitude = value < 0 ? 0 - bits : bits;
  for (const BasicDataType type :
       {wanted, BasicDataType::SInt, BasicDataType::Int, BasicDataType::DInt}) {
    if (integerFits(value < 0, magnitude, type)) return type;
  }
  return BasicDataType::LInt;
}

}  // namespace

Expr& Analyser::analyseLeaf(ASTNode& parent, int index) {
  if (becomesAddress(parent, index)) {
    const ASTNode& access = *parent.leaf(index);
    Expr* const address = tree_.make<Expr>(Expression::Variable);
    Text* const text = tree_.make<Text>(tree_.intern(TreeBuilder::source(access)));
    TreeBuilder::setSpan(*text, access.pos(), TreeBuilder::source(access));
    TreeBuilder::setSpan(*address, access.pos(), TreeBuilder::source(access));
    tree_.setLeaves(*address, {text});
    TreeBuilder::setLeaf(parent, index, address);
  }
  auto& expr = static_cast<Expr&>(*parent.leaf(index));
  if (!expr.analysed) {
    expr.analysed = true;
    expr.dataType = typeExpression(expr);
    expr.setBasicType(typeOf(expr));
  }
  return expr;
}

// A word's bit (`D10.3`) reads like a bit of a variable until no such variable is
// found.
bool Analyser::becomesAddress(ASTNode& parent, int index) {
  const auto& expr = static_cast<const Expr&>(*parent.leaf(index));
  if (expr.access != Expr::Access::Bit || expr.analysed) return false;
  const auto& base = static_cast<const Expr&>(*expr.leaf(0));
  vel::HeapAddress address;
  return base.op() == Expression::Variable && services_.usesDeviceLetters() &&
         unit_->variable(TreeBuilder::source(base)) == nullptr &&
         services_.memory.parse(TreeBuilder::source(expr), address);
}

bool Analyser::isAddress(std::string_view text) const {
  vel::HeapAddress address;
  const bool iec = !text.empty() && text[0] == '%';
  return (iec || services_.usesDeviceLetters()) && services_.memory.parse(text, address);
}

vel::SymbolDataType* Analyser::typeExpression(Expr& expr) {
  switch (static_cast<int>(expr.op())) {
    case Expression::Constant:
      return services_.symbols.dataType(literalOf(expr)->value.typeName);
    case Expression::Variable:
      return typeVariable(expr);
    case Expression::Typed:
      return typeAccess(expr);
    case op::kWrapper: {
      auto& call = static_cast<Call&>(*expr.leaf(0));
      Type* const type = analyseCall(call);
      requireValue(call, type);
      return type;
    }
    case op::kNegate:
    case op::kNot:
      return typeUnary(expr);
    case op::kArrayValue:
    case op::kRepeat:
    case op::kStructValue:
      return nullptr;
    default:
      return typeBinary(expr);
  }
}

vel::SymbolDataType* Analyser::typeVariable(Expr& expr) {
  const char* const name = static_cast<const Text&>(*expr.leaf(0)).text();
  if (VarSymbol* const variable = unit_->variable(name)) {
    expr.symbol = variable;
    // A constant's value may be asked for before its declaration's turn comes.
    if (variable->constant && variable->initial != nullptr) {
      analyseLeaf(*variable->initial->parent(), VarDecl::kInitial);
    }
    return variable->dataType();
  }
  vel::HeapAddress address;
  if (isAddress(name)) {
    services_.memory.parse(name, address);
    return services_.symbols.dataType(addressTypeName(address));
  }
  if (name[0] == '%') {
    say(expr, message::kBadAddress, name);
  } else {
    const bool unit = services_.symbols.find(name, {}, Symbol::All) != nullptr;
    say(expr, unit ? message::kNotAValue : message::kUnknownName, name);
  }
  return nullptr;
}

vel::SymbolDataType* Analyser::typeAccess(Expr& expr) {
  switch (expr.access) {
    case Expr::Access::Member:
      return typeMember(expr);
    case Expr::Access::Bit:
      return typeBit(expr);
    default:
      say(expr, message::kNotSupported, "Arrays and pointers are");
      return nullptr;
  }
}

vel::SymbolDataType* Analyser::typeMember(Expr& expr) {
  const Expr& base = analyseLeaf(expr, 0);
  if (base.dataType == nullptr) return nullptr;
  const char* const name = static_cast<const Text&>(*expr.leaf(1)).text();
  const auto* const instance = dynamic_cast<const InstanceType*>(base.dataType);
  VarSymbol* const member = instance != nullptr ? instance->unit->variable(name) : nullptr;
  // In-out parameters hold another unit's variable, and only during a call.
  if (member == nullptr || !member->isParameter() || member->role == Role::InOut) {
    say(*expr.leaf(1), message::kUnknownMember, TreeBuilder::source(base), name);
    return nullptr;
  }
  expr.symbol = member;
  return member->dataType();
}

vel::SymbolDataType* Analyser::typeBit(Expr& expr) {
  const Expr& base = analyseLeaf(expr, 0);
  if (base.dataType == nullptr) return nullptr;
  const ElementaryType* const row = elementaryType(base.dataType->dataType());
  if (!isInteger(base.dataType->dataType()) || expr.bitAccessOffset() >= 8 * row->size) {
    say(expr, message::kBitOutOfRange, std::to_string(expr.bitAccessOffset()),
        base.dataType->typeName());
  }
  return services_.symbols.elementary(BasicDataType::Bool);
}

vel::SymbolDataType* Analyser::typeUnary(Expr& expr) {
  const Expr& operand = analyseLeaf(expr, 0);
  const BasicDataType type = typeOf(operand);
  if (type == BasicDataType::None) return nullptr;
  const bool fits = expr.op() == op::kNot ? type == BasicDataType::Bool || isInteger(type)
                                          : isNumber(type) || isDuration(type);
  if (!fits) {
    say(operand, message::kOperandType, operatorText(expr.op()), displayName(operand.dataType));
    return nullptr;
  }
  if (expr.op() == op::kNot || negated(type) == type) return operand.dataType;
  return services_.symbols.elementary(negated(type));
}

vel::SymbolDataType* Analyser::typeBinary(Expr& expr) {
  const Expr& left = analyseLeaf(expr, 0);
  const Expr& right = analyseLeaf(expr, 1);
  const Meeting meeting = meet(expr);
  if (meeting.kind == Meeting::Kind::Invalid) {
    say(expr, message::kOperandTypes, operatorText(expr.op()), displayName(left.dataType),
        displayName(right.dataType));
    return nullptr;
  }
  if (isInteger(meeting.result) && isLiteralSum(expr)) {
    if (const auto value = constantInteger(expr)) {
      return services_.symbols.elementary(typeThatHolds(*value, meeting.result));
    }
  }
  // A side of the result's type keeps its name: BYTE AND BYTE is a BYTE.
  if (typeOf(left) == meeting.result && literalOf(left) == nullptr) return left.dataType;
  if (typeOf(right) == meeting.result && literalOf(right) == nullptr) return right.dataType;
  return services_.symbols.elementary(meeting.result);
}

bool Analyser::requireWritable(const Expr& target) {
  const Expr* place = &target;
  while (place->access == Expr::Access::Bit) place = static_cast<const Expr*>(place->leaf(0));
  const auto* const variable = dynamic_cast<const VarSymbol*>(place->symbol);
  bool writable = false;
  if (place->op() == Expression::Variable) {
    writable = variable == nullptr || !variable->constant;  // an address is writable
  } else if (place->access == Expr::Access::Member) {
    writable = variable != nullptr && variable->role == Role::Input;
  }
  const bool instance =
      place->dataType != nullptr && place->dataType->dataType() == BasicDataType::FunctionBlock;
  if (place->op() != Expression::Constant && place->dataType == nullptr) return true;
  if (writable && !instance) return true;
  say(target, message::kNotWritable, TreeBuilder::source(target));
  return false;
}

}  // namespace refhost
