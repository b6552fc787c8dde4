#include "refhost/semantics/constant_variables.h"

#include <algorithm>
#include <utility>

#include "refhost/semantics/constants.h"
#include "refhost/semantics/dependency_order.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

bool isBefore(const VarSymbol* a, const VarSymbol* b) {
  const vel::TextLocation first = a->initial->pos();
  const vel::TextLocation second = b->initial->pos();
  return first.file() != second.file() ? first.file() < second.file()
                                       : first.offset() < second.offset();
}

}  // namespace

bool ConstantVariables::compute(VarSymbol& constant) {
  visitDependencies(
      constant, [this](const VarSymbol& item) { return neededBy(item); },
      [this](std::vector<VarSymbol*>& cycle) { refuseCycle(cycle); },
      [this](VarSymbol& item, const auto& needs) { computeNow(item, needs); });
  return !constant.refused;
}

std::vector<VarSymbol*> ConstantVariables::neededBy(const VarSymbol& constant) {
  std::vector<VarSymbol*> needed;
  if (constant.initial == nullptr) return needed;
  UnitSymbol* const asking = std::exchange(context_.unit, constant.owner);
  anyNode(*constant.initial, [&](const ASTNode& node) {
    std::string_view name;
    if (node.type() == vel::ASTType::Expression) {
      const auto& expr = static_cast<const Expr&>(node);
      if (expr.kind == ExprKind::Variable) name = TreeBuilder::source(expr);
    } else if (kindOf(node) == NodeKind::Invocation) {
      // `N(0)` in an initial value is parsed as a call, but may be a repetition.
      name = TreeBuilder::source(*node.leaf(0));
    }
    VarSymbol* const variable = name.empty() ? nullptr : parts_.names.variableNamed(name);
    if (variable != nullptr && variable->constant) needed.push_back(variable);
    return false;
  });
  context_.unit = asking;
  return needed;
}

void ConstantVariables::refuseCycle(std::vector<VarSymbol*>& cycle) {
  std::rotate(cycle.begin(), std::min_element(cycle.begin(), cycle.end(), isBefore), cycle.end());
  std::string names;
  for (VarSymbol* const constant : cycle) {
    constant->refused = true;
    names += constant->name() + ", ";
  }
  const VarSymbol& first = *cycle.front();
  say(*first.initial, message::kConstantCircle, first.name(), names + first.name());
}

void ConstantVariables::computeNow(VarSymbol& constant, const std::vector<VarSymbol*>& needs) {
  if (constant.initial == nullptr) return;
  for (const VarSymbol* const needed : needs) {
    constant.refused = constant.refused || needed->refused;
  }
  UnitSymbol* const asking = std::exchange(context_.unit, constant.owner);
  const Expr& initial =
      parts_.expressions.analyseLeaf(*constant.initial->parent(), VarDecl::kInitial);
  context_.unit = asking;
  const BasicDataType type = valueType(constant.dataType());
  const auto value = constantOf(initial);
  if (value && isInteger(type)) constant.value = tree_.make<TypedConstant>(value->bits(), type);
}

}  // namespace refhost
