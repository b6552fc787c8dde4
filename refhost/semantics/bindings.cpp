#include "refhost/semantics/bindings.h"

namespace refhost {

int namedArguments(const ASTNode& list) {
  int named = 0;
  for (int i = 0; i < list.leavesCount(); ++i) {
    if (kindOf(*list.leaf(i)) == NodeKind::Argument) ++named;
  }
  return named;
}

namespace {

// The parameters to which `count` positional arguments are bound in turn.
std::vector<VarSymbol*> positionsOf(const UnitSymbol& unit, int count) {
  std::vector<VarSymbol*> all;
  std::vector<VarSymbol*> taken;
  for (const auto& variable : unit.variables()) {
    if (!variable->isParameter()) continue;
    all.push_back(variable.get());
    if (variable->role != Role::Output) taken.push_back(variable.get());
  }
  return static_cast<std::size_t>(count) > taken.size() ? all : taken;
}

}  // namespace

std::vector<Binding> bindArguments(const Call& call, const UnitSymbol& unit) {
  std::vector<Binding> bindings;
  const ASTNode* const list = call.parameters();
  const int count = list != nullptr ? list->leavesCount() : 0;
  const int positional = list != nullptr ? count - namedArguments(*list) : 0;
  const std::vector<VarSymbol*> positions = positionsOf(unit, positional);
  for (int i = 0; i < count; ++i) {
    Binding binding;
    binding.index = i;
    binding.node = list->leaf(i);
    if (kindOf(*binding.node) == NodeKind::Argument) {
      binding.named = static_cast<const Argument*>(binding.node);
      const auto* const formal = static_cast<const Text*>(binding.node->leaf(0));
      VarSymbol* const parameter = unit.variable(formal->text());
      if (parameter != nullptr && parameter->isParameter()) binding.parameter = parameter;
      binding.value = static_cast<Expr*>(binding.node->leaf(1));
    } else {
      const auto position = static_cast<std::size_t>(i);
      if (position < positions.size()) binding.parameter = positions[position];
      binding.value = static_cast<Expr*>(binding.node);
    }
    bindings.push_back(binding);
  }
  return bindings;
}

}  // namespace refhost
