// The names in statements and expressions.
#include "refhost/editor/name_walk.h"

namespace refhost {

using vel::ASTType;
using vel::TreeBuilder;

namespace {

const vel::SymbolDataType* elementOf(const vel::SymbolDataType* type) {
  if (const auto* const array = dynamic_cast<const ArrayType*>(type)) return array->element;
  if (const OpenArrayType* const open = asOpenArray(type)) return open->element;
  const auto* const pointer = dynamic_cast<const PointerType*>(type);
  return pointer != nullptr ? pointer->target : nullptr;
}

}  // namespace

void NameWalk::walk(const ASTNode& node) {
  const auto statement = statementKindOf(node);
  if (node.type() == ASTType::Expression) {
    walkExpr(static_cast<const Expr&>(node), false);
  } else if (kindOf(node) == NodeKind::Invocation) {
    walkCall(static_cast<const Call&>(node));
  } else if (statement == StatementKind::Assignment || statement == StatementKind::Bind) {
    walkExpr(exprAt(node, 0), true);
    walk(*node.leaf(1));
  } else if (dynamic_cast<const TypeSpec*>(&node) != nullptr) {
    walkType(node);
  } else {
    for (int i = 0; i < node.leavesCount(); ++i) {
      if (node.leaf(i) != nullptr) walk(*node.leaf(i));
    }
  }
}

// A chain of left operands is visited by a loop, since it may be long.
void NameWalk::walkExpr(const Expr& whole, bool writes) {
  for (const Expr* expr = &whole;;) {
    switch (formOf(expr->kind)) {
      case ExprForm::Literal:
        return;
      case ExprForm::Variable:
        walkName(*expr, writes);
        return;
      case ExprForm::Call:
        walkCall(static_cast<const Call&>(*expr->leaf(0)));
        return;
      case ExprForm::Parts:
        walkValue(*expr, expr->dataType);
        return;
      case ExprForm::Access:
        if (expr->kind == ExprKind::Member && walkMember(*expr, writes)) return;
        for (int i = 1; expr->kind == ExprKind::Element && i < expr->leavesCount(); ++i) {
          walk(*expr->leaf(i));
        }
        writes = writes && expr->kind != ExprKind::Dereference;
        break;
      case ExprForm::Unary:
      case ExprForm::Arithmetic:
      case ExprForm::Comparison:
      case ExprForm::Logic:
        writes = false;
        if (expr->leavesCount() > 1) walk(*expr->leaf(1));
        break;
    }
    if (expr->leaf(0)->type() != ASTType::Expression) {
      walk(*expr->leaf(0));
      return;
    }
    expr = &exprAt(*expr, 0);
  }
}

// A variable, a value of an enumeration with or without its type, or a type that is an operand.
void NameWalk::walkName(const Expr& expr, bool writes) {
  const std::string_view text = TreeBuilder::source(expr);
  const std::size_t mark = text.find('#');
  if (mark != std::string_view::npos) {
    const SymbolId type = symbols_.ofType(text.substr(0, mark));
    add(expr.pos(), mark, type, Lookup::Type);
    SymbolId value = symbols_.of(expr.symbol);
    if (value == kNoSymbol) value = symbols_.partOf(type, text.substr(mark + 1));
    const auto skipped = static_cast<std::uint32_t>(mark) + 1;
    add(vel::TextLocation(expr.pos().file(), expr.pos().offset() + skipped), text.size() - skipped,
        value, Lookup::Qualified);
    return;
  }
  Occurrence* const added = add(expr, named(expr), Lookup::Name);
  if (added != nullptr) added->writes = writes;
}

SymbolId NameWalk::named(const Expr& name) const {
  const std::string_view text = TreeBuilder::source(name);
  SymbolId id = symbols_.of(name.symbol);
  if (id == kNoSymbol) id = symbols_.variable(text, unit_);
  if (id == kNoSymbol) id = symbols_.value(text, unit_);
  return id != kNoSymbol ? id : typeNamed(text);
}

// Returns true for a value with its type, `Color.Red`.
bool NameWalk::walkMember(const Expr& expr, bool writes) {
  const ASTNode& name = *expr.leaf(1);
  const Expr& base = exprAt(expr, 0);
  SymbolId member = symbols_.of(expr.symbol);
  const bool isValue = member != kNoSymbol && symbols_[member].kind == SymbolKind::Value;
  if (isValue || (base.kind == ExprKind::Variable && base.symbol == nullptr)) {
    const std::string_view typeName = TreeBuilder::source(base);
    const SymbolId type = symbols_.ofType(typeName);
    const SymbolId value = isValue ? member : symbols_.partOf(type, TreeBuilder::source(name));
    const bool variable = !isValue && symbols_.variable(typeName, unit_) != kNoSymbol;
    if (type != kNoSymbol && !variable && symbols_[type].kind != SymbolKind::Structure) {
      add(base, type, Lookup::Name);
      add(name, value, Lookup::Qualified);
      return true;
    }
  }
  if (member == kNoSymbol) member = symbols_.of(memberOf(typeOf(base), TreeBuilder::source(name)));
  Occurrence* const added = add(name, member, Lookup::Qualified);
  if (added != nullptr) added->writes = writes;
  return false;
}

// Also of an expression that the analysis has not reached.
const vel::SymbolDataType* NameWalk::typeOf(const Expr& expr) const {
  if (expr.dataType != nullptr) return expr.dataType;
  switch (expr.kind) {
    case ExprKind::Variable: {
      const SymbolId id = named(expr);
      return id != kNoSymbol ? symbols_.dataType(id) : nullptr;
    }
    case ExprKind::Member: {
      const VarSymbol* const member =
          memberOf(typeOf(exprAt(expr, 0)), TreeBuilder::source(*expr.leaf(1)));
      return member != nullptr ? member->dataType() : nullptr;
    }
    case ExprKind::Element:
    case ExprKind::Dereference:
      return elementOf(typeOf(exprAt(expr, 0)));
    default:
      return nullptr;
  }
}

void NameWalk::walkCall(const Call& call) {
  const ASTNode& name = *call.leaf(0);
  SymbolId callee = kNoSymbol;
  if (name.type() == ASTType::Expression) {
    walkExpr(static_cast<const Expr&>(name), false);
    callee = blockOf(typeOf(static_cast<const Expr&>(name)));
  } else {
    const SymbolId id = calleeNamed(call, TreeBuilder::source(name));
    add(name, id, Lookup::Callee);
    const bool unit = id == kNoSymbol || isUnit(symbols_[id].kind);
    callee = unit ? id : blockOf(symbols_[id].isDeclared() ? symbols_.dataType(id) : nullptr);
  }
  walkArguments(call, callee);
  for (const Argument* const argument : {call.enable, call.enabled}) {
    if (argument != nullptr) walkExpr(exprAt(*argument, 1), argument->output);
  }
}

SymbolId NameWalk::calleeNamed(const Call& call, std::string_view name) const {
  if (call.instance != nullptr) return symbols_.of(call.instance->symbol);
  if (call.function() != nullptr) return symbols_.ofUnit(*call.function()->node);
  const SymbolId standard = symbols_.standard(name);
  if (standard != kNoSymbol) return standard;
  const SymbolId unit = symbols_.ofType(name);
  if (unit != kNoSymbol && symbols_[unit].kind == SymbolKind::Function) return unit;
  const SymbolId variable = symbols_.variable(name, unit_);
  return variable != kNoSymbol ? variable : unit;
}

SymbolId NameWalk::blockOf(const Type* type) const {
  const auto* const instance = dynamic_cast<const InstanceType*>(type);
  return instance != nullptr ? symbols_.ofUnit(*instance->unit->node) : kNoSymbol;
}

// The arguments of a call of the unit; kNoSymbol for an operator.
void NameWalk::walkArguments(const Call& call, SymbolId unit) {
  const ASTNode* const list = call.parameters();
  if (list == nullptr && call.leavesCount() > 1 && call.leaf(1) != nullptr) walk(*call.leaf(1));
  for (int i = 0; list != nullptr && i < list->leavesCount(); ++i) {
    const ASTNode& item = *list->leaf(i);
    if (kindOf(item) != NodeKind::Argument) {
      walk(item);
      continue;
    }
    const auto& argument = static_cast<const Argument&>(item);
    const SymbolId formal = unit != kNoSymbol
                                ? symbols_.variableOf(unit, TreeBuilder::source(*item.leaf(0)))
                                : kNoSymbol;
    const bool parameter = formal != kNoSymbol && isParameter(symbols_[formal].kind);
    Occurrence* const added = add(*item.leaf(0), parameter ? formal : kNoSymbol, Lookup::Qualified);
    if (added != nullptr) added->writes = !argument.output;
    const bool inOut = parameter && symbols_[formal].kind == SymbolKind::InOut;
    walkExpr(exprAt(item, 1), argument.output || inOut);
  }
}

}  // namespace refhost
