// Operands are evaluated from left to right, each once. C leaves the order unspecified, which
// matters only for functions with side effects, and macros evaluate arguments several times, so
// that nested ones would be evaluated, and expanded by the preprocessor, exponentially often.
#include <algorithm>

#include "refhost/emit/expression_writer.h"
#include "refhost/semantics/constants.h"

namespace refhost {

using vel::ASTNode;

namespace {

// False if repeating its C costs nothing: a constant, a variable or a member of one.
bool isCompound(const ASTNode* node) {
  const auto* operand = static_cast<const Expr*>(node);
  while (operand->kind == ExprKind::Member) operand = static_cast<const Expr*>(operand->leaf(0));
  const bool simple = operand->kind == ExprKind::Variable || operand->kind == ExprKind::Literal;
  return !simple && !constantInteger(*operand);
}

// True of a text that an operator prints into a buffer of its own. That ends with the innermost
// statement expression around the call.
bool isPrinted(const ASTNode& operand) {
  return isTextType(static_cast<const Expr&>(operand).dataType) &&
         anyNode(operand, [](const ASTNode& node) {
           if (kindOf(node) != NodeKind::Invocation) return false;
           const auto& call = static_cast<const Call&>(node);
           return call.op() != nullptr && isTextType(call.dataType) &&
                  call.traits()->family == OperatorFamily::StringConversion;
         });
}

}  // namespace

bool hasCompoundOperand(const Call& call) {
  const ASTNode& list = *call.leaf(1);
  for (int i = 0; i < list.leavesCount(); ++i) {
    if (isCompound(list.leaf(i))) return true;
  }
  return false;
}

std::string ExpressionWriter::inOrder(const std::vector<const ASTNode*>& operands, Uses uses,
                                      const std::function<std::string()>& write,
                                      const std::vector<const ASTNode*>& lvalues) {
  const auto isPlace = [&lvalues](const ASTNode* operand) {
    return std::find(lvalues.begin(), lvalues.end(), operand) != lvalues.end();
  };
  const auto isFixed = [&](const ASTNode* operand) {
    return isPlace(operand) ? !PlaceWriter::canMove(static_cast<const Expr&>(*operand))
                            : isConstant(*operand);
  };
  const auto hasEffects = [this](const ASTNode* operand) { return file_.effects.in(*operand); };
  // The operands before the last one with effects are held in temporaries. That one needs a
  // temporary only if it could be evaluated again, not at all, or after an operand behind it.
  auto ordered = file_.effects.any()
                     ? std::find_if(operands.rbegin(), operands.rend(), hasEffects).base()
                     : operands.begin();
  const bool lastIsHeld = uses != Uses::Once || !std::all_of(ordered, operands.end(), isFixed);
  if (ordered != operands.begin() && !lastIsHeld) --ordered;
  const auto isHeld = [&](auto at) {
    if (isPlace(*at)) return at < ordered && !isFixed(*at);
    const bool repeated = uses == Uses::Repeated && isCompound(*at);
    return repeated || (at < ordered && !isConstant(**at));
  };
  bool holds = false;
  for (auto at = operands.begin(); at != operands.end(); ++at) holds = holds || isHeld(at);
  if (!holds) return write();
  std::string held;
  for (auto at = operands.begin(); at != operands.end(); ++at) {
    const auto& operand = static_cast<const Expr&>(**at);
    if (operand.dataType == nullptr || (!isHeld(at) && (isPlace(*at) || !isPrinted(operand)))) {
      continue;
    }
    if (isPlace(*at)) {
      held += places.hold(operand) + ' ';
      continue;
    }
    std::string value;
    append(operand, value);
    // A string stays in scope: the value of a statement expression may be a pointer to it.
    const bool text = isTextType(operand.dataType);
    const std::string name = text ? body_.temporary(operand.dataType) : body_.newName();
    if (!text) held += typeText(operand.dataType) + ' ';
    held += storeText(file_.names, operand.dataType, {Place::Kind::Object, name}, value,
                      typeOf(operand)) +
            "; ";
    body_.held[*at] = name;
  }
  const std::string text = write();
  if (held.empty()) return text;
  for (const ASTNode* const operand : operands) body_.held.erase(operand);
  return "({ " + held + text + "; })";
}

}  // namespace refhost
