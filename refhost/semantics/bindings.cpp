#include "refhost/semantics/bindings.h"

namespace refhost {

int namedArguments(const ASTNode& list) {
  int named = 0;
  for (int i = 0; i < list.leavesCount(); ++i) {
    if (kindOf(*list.leaf(i)) == NodeKind::Argument) ++named;
  }
  return named;
}

std::vector<Binding> bindArguments(const Call& call, const UnitSymbol& unit) {
  std::vector<VarSymbol*> positions;
  for (const auto& variable : unit.variables()) {
    if (variable->role == Role::Input || variable->role == Role::InOut) {
      positions.push_back(variable.get());
    }
  }
  std::vector<Binding> bindings;
  const ASTNode* const list = call.leaf(1);
  const bool given = list != nullptr && list->type() == vel::ASTType::ParameterList;
  const int count = given ? list->leavesCount() : 0;
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
