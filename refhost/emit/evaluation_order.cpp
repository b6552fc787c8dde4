// Operands are evaluated from left to right, each once. C leaves the order unspecified and macros
// evaluate arguments several times, which matters only for functions with side effects.
#include <algorithm>

#include "refhost/emit/expression_writer.h"

namespace refhost {

using vel::ASTNode;

namespace {

bool isConstant(const ASTNode* node) { return literalOf(*node) != nullptr; }

}  // namespace

std::string ExpressionWriter::inOrder(const std::vector<const ASTNode*>& operands, bool repeated,
                                      const std::function<std::string()>& write) {
  if (!file_.effects.any()) return write();
  const auto hasEffects = [this](const ASTNode* operand) { return file_.effects.in(*operand); };
  const auto last = std::find_if(operands.rbegin(), operands.rend(), hasEffects).base();
  if (last == operands.begin()) return write();
  // The operands before the last one with effects are held in temporaries. That one needs a
  // temporary only if it could be evaluated again, or after an operand behind it.
  const bool first = repeated || !std::all_of(last, operands.end(), isConstant);
  std::string held;
  for (auto at = operands.begin(); at != (first ? last : last - 1); ++at) {
    const auto& operand = static_cast<const Expr&>(**at);
    if (isConstant(*at) || operand.dataType == nullptr) continue;
    std::string value;
    append(operand, value);
    const std::string name = body_.temporary(operand.dataType);
    held += storeText(file_.names, operand.dataType, {Place::Kind::Object, name}, value,
                      typeOf(operand)) +
            ", ";
    body_.held[*at] = name;
  }
  const std::string text = write();
  for (const ASTNode* const operand : operands) body_.held.erase(operand);
  return held.empty() ? text : "(" + held + text + ")";
}

}  // namespace refhost
