#include "refhost/semantics/constant_variables.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "hostkit/operator_traits.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/dependency_order.h"

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

// The name that `node` reads the value of; empty for none. `N(0)` among the values of an array is
// parsed as a call, but may be a repetition.
std::string_view nameIn(const ASTNode& node) {
  if (node.type() != vel::ASTType::Expression) return {};
  const auto& expr = static_cast<const Expr&>(node);
  if (expr.kind == ExprKind::Variable) return TreeBuilder::source(expr);
  const ASTNode* const parent = expr.kind == ExprKind::Call ? expr.parent() : nullptr;
  if (parent == nullptr || parent->type() != vel::ASTType::Expression) return {};
  const ExprKind list = static_cast<const Expr*>(parent)->kind;
  const bool value = list == ExprKind::ArrayValue || list == ExprKind::Repeat;
  return value ? TreeBuilder::source(*expr.leaf(0)->leaf(0)) : std::string_view();
}

// A call that depends on the type or the place of its operand, whatever its value.
bool isSizeOrAddress(const ASTNode& node) {
  return kindOf(node) == NodeKind::Invocation &&
         hostkit::operatorTraits(TreeBuilder::source(*node.leaf(0))).result ==
             OperatorTraits::Result::Located;
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
  std::vector<const ASTNode*> waiting{constant.initial};
  while (!waiting.empty()) {
    const ASTNode& node = *waiting.back();
    waiting.pop_back();
    if (const std::string_view name = nameIn(node); !name.empty()) {
      VarSymbol* const variable = parts_.names.variableNamed(name);
      if (variable != nullptr && variable->constant) needed.push_back(variable);
    }
    for (int i = 0; !isSizeOrAddress(node) && i < node.leavesCount(); ++i) {
      if (node.leaf(i) != nullptr) waiting.push_back(node.leaf(i));
    }
  }
  context_.unit = asking;
  return needed;
}

// A cycle that shares a constant with one that has been reported is not reported again.
void ConstantVariables::refuseCycle(std::vector<VarSymbol*>& cycle) {
  constexpr std::size_t kMostNames = 10;
  std::rotate(cycle.begin(), std::min_element(cycle.begin(), cycle.end(), isBefore), cycle.end());
  std::string names;
  bool reported = false;
  for (std::size_t i = 0; i < cycle.size(); ++i) {
    reported = reported || cycle[i]->refused;
    cycle[i]->refused = true;
    if (i < kMostNames) names += cycle[i]->name() + ", ";
  }
  if (cycle.size() > kMostNames) names += "..., ";
  const VarSymbol& first = *cycle.front();
  if (!reported) say(*first.initial, message::kConstantCircle, first.name(), names + first.name());
}

void ConstantVariables::computeNow(VarSymbol& constant, const std::vector<VarSymbol*>& needs) {
  if (constant.initial == nullptr) return;
  for (const VarSymbol* const needed : needs) {
    constant.refused = constant.refused || needed->refused;
  }
  UnitSymbol* const asking = std::exchange(context_.unit, constant.owner);
  const Expr& initial = parts_.expressions.analyseLeaf(*constant.initial->parent(),
                                                       VarDecl::kInitial, constant.dataType());
  const bool valid = parts_.assignments.accepts(constant.dataType(), initial);
  context_.unit = asking;
  const BasicDataType type = valueType(constant.dataType());
  const bool wrongType = isInteger(type) && !isInteger(typeOf(initial));
  const bool unknown = initial.dataType == nullptr && formOf(initial.kind) != ExprForm::Parts;
  constant.refused = constant.refused || unknown || wrongType || !valid;
  const auto value = constantOf(initial);
  if (value && isInteger(type) && !constant.refused)
    constant.value = tree_.make<TypedConstant>(value->bits(), type);
}

}  // namespace refhost
