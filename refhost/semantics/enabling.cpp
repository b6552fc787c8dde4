// The arguments EN and ENO, which every call can have.
#include "hostkit/folding.h"
#include "refhost/semantics/bindings.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;

// The member of `call` for an argument that is EN or ENO, null for any other argument. If the
// callee declares EN or ENO itself, it is an ordinary parameter.
Argument** Calls::enablingPlace(Call& call, const ASTNode& node, const UnitSymbol* callee) {
  if (kindOf(node) != NodeKind::Argument) return nullptr;
  const auto& argument = static_cast<const Argument&>(node);
  const char* const formal = static_cast<const Text&>(*argument.leaf(0)).text();
  if (!equalIgnoringCase(formal, argument.output ? "ENO" : "EN")) return nullptr;
  const VarSymbol* const own = callee != nullptr ? callee->variable(formal) : nullptr;
  if (own != nullptr && own->isParameter()) return nullptr;
  return argument.output ? &call.enabled : &call.enable;
}

void Calls::takeEnabling(Call& call, const UnitSymbol* callee) {
  ASTNode* const list = call.parameters();
  if (list == nullptr || namedArguments(*list) == 0) return;
  std::vector<ASTNode*> others;
  for (int i = 0; i < list->leavesCount(); ++i) {
    Argument** const place = enablingPlace(call, *list->leaf(i), callee);
    if (place == nullptr) {
      others.push_back(list->leaf(i));
    } else if (*place == nullptr) {
      *place = static_cast<Argument*>(list->leaf(i));
    } else {
      sayTwice(*list->leaf(i), (*place)->output ? "ENO" : "EN", **place);
    }
  }
  if (call.enable == nullptr && call.enabled == nullptr) return;
  tree_.setLeaves(*list, others);
  const Type* const flag = services_.symbols.elementary(BasicDataType::Bool);
  if (call.enable != nullptr) {
    const Expr& condition = parts_.expressions.analyseLeaf(*call.enable, 1, flag);
    parts_.assignments.check(flag, condition.dataType, condition);
  }
  if (call.enabled != nullptr) {
    const Expr& target = parts_.expressions.analyseTarget(*call.enabled, 1);
    if (parts_.expressions.requireWritable(target))
      parts_.assignments.check(target.dataType, flag, target);
    if (context_.unit != nullptr) context_.unit->storesEnabled = true;
  }
}

}  // namespace refhost
