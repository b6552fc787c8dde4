// The order in which operands are evaluated: from left to right, each once. C leaves it
// open and macros read their parameters several times, which shows only where functions
// with effects are called.
#include <algorithm>

#include "core/operator.h"
#include "refhost/emit/c_generator.h"

namespace refhost {

using vel::ASTNode;

namespace {

using Functions = std::unordered_set<const vel::Symbol*>;

// A call with effects, or one that stores its ENO.
bool hasEffect(const ASTNode& node, const Functions& functions) {
  if (kindOf(node) != NodeKind::Invocation) return false;
  const auto& call = static_cast<const Call&>(node);
  return call.enabled != nullptr || functions.count(call.symbol) != 0;
}

// Reads or writes what is not a variable of `function` itself.
bool reachesOutside(const ASTNode& whole, const UnitSymbol& function) {
  return anyNode(whole, [&function](const ASTNode& node) {
    if (kindOf(node) == NodeKind::Invocation) {
      const OperatorTraits* const traits = static_cast<const Call&>(node).traits;
      return traits != nullptr && (!traits->givesValue() || traits->countsCalls());
    }
    if (node.type() != vel::ASTType::Expression) return false;
    const auto& expr = static_cast<const Expr&>(node);
    if (expr.access == Expr::Access::Dereference) return true;
    if (expr.op() != Expression::Variable ||
        dynamic_cast<const NamedValue*>(expr.symbol) != nullptr) {
      return false;
    }
    const auto* const variable = asVariable(expr.symbol);
    return variable == nullptr || variable->owner != &function || variable->iecAddress().area != 0;
  });
}

bool isConstant(const ASTNode* node) { return literalOf(*node) != nullptr; }

}  // namespace

void CGenerator::findEffects() {
  std::vector<const UnitSymbol*> others;
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    ordered_ = ordered_ || unit->storesEnabled;
    if (unit->type() != vel::POUType::Function) continue;
    bool effects = reachesOutside(*unit->node->leaf(Unit::kBody), *unit);
    for (const auto& variable : unit->variables()) {
      effects = effects || variable->role == Role::InOut || variable->role == Role::Output;
    }
    if (effects) {
      effects_.insert(unit);
    } else {
      others.push_back(unit);
    }
  }
  const auto isEffect = [this](const ASTNode& node) { return hasEffect(node, effects_); };
  // Effects are those of what is called, too.
  for (std::size_t before = 0; before != effects_.size();) {
    before = effects_.size();
    for (const UnitSymbol* const unit : others) {
      if (anyNode(*unit->node->leaf(Unit::kBody), isEffect)) effects_.insert(unit);
    }
  }
  ordered_ = ordered_ || !effects_.empty();
}

std::vector<const ASTNode*> CGenerator::parametersOf(const Call& call) {
  std::vector<const ASTNode*> parameters;
  const ASTNode* const list = call.leaf(1);
  if (list == nullptr || list->type() != vel::ASTType::ParameterList) return parameters;
  for (int i = 0; i < list->leavesCount(); ++i) parameters.push_back(list->leaf(i));
  return parameters;
}

std::string CGenerator::inOrder(const std::vector<const ASTNode*>& operands, bool repeated,
                                const std::function<std::string()>& write) {
  const auto hasEffects = [this](const ASTNode* operand) {
    return anyNode(*operand, [this](const ASTNode& node) { return hasEffect(node, effects_); });
  };
  if (!ordered_) return write();
  const auto last = std::find_if(operands.rbegin(), operands.rend(), hasEffects).base();
  if (last == operands.begin()) return write();
  // The last call with effects comes by itself after what stands before it; where
  // something else is read behind it, it must come first.
  const bool first = repeated || !std::all_of(last, operands.end(), isConstant);
  std::string held;
  for (auto at = operands.begin(); at != (first ? last : last - 1); ++at) {
    const auto& operand = static_cast<const Expr&>(**at);
    if (isConstant(*at) || operand.dataType == nullptr) continue;
    std::string value;
    append(operand, value);
    const std::string name = temporary(operand.dataType);
    held += storeAs(operand.dataType, {Place::Kind::Object, name}, value, typeOf(operand)) + ", ";
    held_[*at] = name;
  }
  const std::string text = write();
  for (const ASTNode* const operand : operands) held_.erase(operand);
  return held.empty() ? text : "(" + held + text + ")";
}

}  // namespace refhost
