#include "refhost/emit/effects.h"

namespace refhost {

using vel::ASTNode;

namespace {

// True when the body reads or writes anything but variables of `function`.
bool reachesOutside(const ASTNode& whole, const UnitSymbol& function) {
  return anyNode(whole, [&function](const ASTNode& node) {
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
    return variable == nullptr || variable->owner != &function || variable->isLocated();
  });
}

}  // namespace

Effects::Effects(const SymbolTable& symbols) {
  std::vector<const UnitSymbol*> others;
  for (const UnitSymbol* const unit : symbols.units()) {
    any_ = any_ || unit->storesEnabled;
    if (unit->type() != vel::POUType::Function) continue;
    bool effects = reachesOutside(*unit->node->leaf(Unit::kBody), *unit);
    for (const auto& variable : unit->variables()) {
      effects = effects || variable->role == Role::InOut || variable->role == Role::Output;
    }
    if (effects) {
      functions_.insert(unit);
    } else {
      others.push_back(unit);
    }
  }
  // A function also has the effects of the functions that it calls.
  for (std::size_t before = 0; before != functions_.size();) {
    before = functions_.size();
    for (const UnitSymbol* const unit : others) {
      if (in(*unit->node->leaf(Unit::kBody))) functions_.insert(unit);
    }
  }
  any_ = any_ || !functions_.empty();
}

bool Effects::in(const ASTNode& whole) const {
  return anyNode(whole, [this](const ASTNode& node) {
    if (kindOf(node) != NodeKind::Invocation) return false;
    const auto& call = static_cast<const Call&>(node);
    return call.enabled != nullptr || functions_.count(call.function()) != 0;
  });
}

}  // namespace refhost
