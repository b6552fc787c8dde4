// The order in which operands are evaluated: from left to right, each once. C leaves it
// open and macros read their parameters several times, which shows only where functions
// with effects are called.
#include <algorithm>

#include "core/operator.h"
#include "refhost/emit/c_generator.h"

namespace refhost {

using vel::ASTNode;

namespace {

bool isConstant(const ASTNode* node) { return literalOf(*node) != nullptr; }

}  // namespace

std::vector<const ASTNode*> CGenerator::parametersOf(const Call& call) {
  std::vector<const ASTNode*> parameters;
  const ASTNode* const list = call.leaf(1);
  if (list == nullptr || list->type() != vel::ASTType::ParameterList) return parameters;
  for (int i = 0; i < list->leavesCount(); ++i) parameters.push_back(list->leaf(i));
  return parameters;
}

std::string CGenerator::inOrder(const std::vector<const ASTNode*>& operands, bool repeated,
                                const std::function<std::string()>& write) {
  if (!effects_.any()) return write();
  const auto hasEffects = [this](const ASTNode* operand) { return effects_.in(*operand); };
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
    held += storeText(operand.dataType, {Place::Kind::Object, name}, value, typeOf(operand)) + ", ";
    held_[*at] = name;
  }
  const std::string text = write();
  for (const ASTNode* const operand : operands) held_.erase(operand);
  return held.empty() ? text : "(" + held + text + ")";
}

}  // namespace refhost
