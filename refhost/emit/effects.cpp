#include "refhost/emit/effects.h"

namespace refhost {

using vel::ASTNode;

namespace {

// True when the body reads or writes anything but variables of `unit`.
bool reachesOutside(const ASTNode& whole, const UnitSymbol& unit) {
  return anyNode(whole, [&unit](const ASTNode& node) {
    if (kindOf(node) == NodeKind::Invocation) {
      const OperatorTraits* const traits = static_cast<const Call&>(node).traits();
      return traits != nullptr && (!traits->givesValue() || traits->countsCalls());
    }
    if (node.type() != vel::ASTType::Expression) return false;
    const auto& expr = static_cast<const Expr&>(node);
    if (expr.kind == ExprKind::Dereference || referenceNamed(expr) != nullptr) return true;
    if (expr.kind != ExprKind::Variable ||
        dynamic_cast<const NamedValue*>(expr.symbol) != nullptr) {
      return false;
    }
    const auto* const variable = asVariable(expr.symbol);
    return variable == nullptr || variable->owner != &unit || variable->isLocated();
  });
}

}  // namespace

Effects::Effects(const SymbolTable& symbols) {
  std::vector<const UnitSymbol*> others;
  for (const UnitSymbol* const unit : symbols.units()) {
    any_ = any_ || unit->storesEnabled;
    if (unit->type() == vel::POUType::Program) continue;
    const bool function = unit->type() == vel::POUType::Function;
    bool effects = reachesOutside(*unit->node->leaf(Unit::kBody), *unit);
    for (const auto& variable : unit->variables()) {
      effects =
          effects || variable->role == Role::InOut || (function && variable->role == Role::Output);
    }
    if (effects) {
      units_.insert(unit);
    } else {
      others.push_back(unit);
    }
  }
  // A unit also has the effects of the units that it calls.
  for (std::size_t before = 0; before != units_.size();) {
    before = units_.size();
    for (const UnitSymbol* const unit : others) {
      if (in(*unit->node->leaf(Unit::kBody))) units_.insert(unit);
    }
  }
  for (const UnitSymbol* const unit : symbols.units()) {
    any_ = any_ || (unit->type() == vel::POUType::Function && units_.count(unit) != 0);
  }
}

bool Effects::in(const ASTNode& whole) const {
  return anyNode(whole, [this](const ASTNode& node) {
    if (kindOf(node) != NodeKind::Invocation) return false;
    const auto& call = static_cast<const Call&>(node);
    if (call.instance != nullptr) {
      const auto* const instance = static_cast<const InstanceType*>(call.instance->dataType);
      if (units_.count(instance->unit) != 0) return true;
    }
    return call.enabled != nullptr || units_.count(call.function()) != 0;
  });
}

}  // namespace refhost
