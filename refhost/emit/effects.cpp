#include "refhost/emit/effects.h"

#include <unordered_map>
#include <vector>

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

// The unit that the call runs; null if that is an operator or a function of the standard.
const vel::Symbol* calledBy(const Call& call) {
  if (call.instance == nullptr) return call.function();
  return static_cast<const InstanceType*>(call.instance->dataType)->unit;
}

}  // namespace

Effects::Effects(const SymbolTable& symbols) {
  std::unordered_map<const vel::Symbol*, std::vector<const UnitSymbol*>> callers;
  std::vector<const vel::Symbol*> found;
  for (const UnitSymbol* const unit : symbols.units()) {
    any_ = any_ || unit->storesEnabled;
    const bool callable = unit->type() != vel::POUType::Program || unit->instanceType() != nullptr;
    if (!callable || unit->isTest()) continue;
    const ASTNode& body = *unit->node->leaf(Unit::kBody);
    const bool function = unit->type() == vel::POUType::Function;
    bool effects = reachesOutside(body, *unit);
    for (const auto& variable : unit->variables()) {
      effects =
          effects || variable->role == Role::InOut || (function && variable->role == Role::Output);
    }
    anyNode(body, [&](const ASTNode& node) {
      if (kindOf(node) != NodeKind::Invocation) return false;
      const auto& call = static_cast<const Call&>(node);
      effects = effects || call.enabled != nullptr;
      if (const vel::Symbol* const called = calledBy(call)) callers[called].push_back(unit);
      return false;
    });
    if (effects) found.push_back(unit);
  }
  // A unit also has the effects of the units that it calls.
  while (!found.empty()) {
    const vel::Symbol* const unit = found.back();
    found.pop_back();
    if (!units_.insert(unit).second) continue;
    const std::vector<const UnitSymbol*>& calling = callers[unit];
    found.insert(found.end(), calling.begin(), calling.end());
  }
  for (const UnitSymbol* const unit : symbols.units()) {
    any_ = any_ || (unit->type() == vel::POUType::Function && units_.count(unit) != 0);
  }
}

bool Effects::in(const ASTNode& whole) const {
  return anyNode(whole, [this](const ASTNode& node) {
    if (kindOf(node) != NodeKind::Invocation) return false;
    const auto& call = static_cast<const Call&>(node);
    return call.enabled != nullptr || units_.count(calledBy(call)) != 0;
  });
}

}  // namespace refhost
