#include <fmt/format.h>

#include <algorithm>

#include "refhost/emit/expression_writer.h"
#include "refhost/semantics/constants.h"
#include "refhost/services/standard_functions.h"

namespace refhost {

using FunctionKind = StandardFunction::Kind;

namespace {

bool makesText(const StandardFunction& function) {
  return function.kind == FunctionKind::Part || function.kind == FunctionKind::Join;
}

const VarSymbol* variableOf(const Expr& expr) {
  return expr.kind == ExprKind::Variable ? asVariable(expr.symbol) : nullptr;
}

// True if nothing in `value` can read the memory of the string `target`.
bool sharesNoMemory(const VarSymbol& target, const vel::ASTNode& value) {
  if (target.indirect) return false;
  const bool inInstance = target.owner->type() == vel::POUType::FunctionBlock;
  return !anyNode(value, [&](const vel::ASTNode& node) {
    if (node.type() != vel::ASTType::Expression) return false;
    const auto& expr = static_cast<const Expr&>(node);
    if (typeOf(expr) == BasicDataType::Pointer || referenceNamed(expr) != nullptr) return true;
    const VarSymbol* const read = variableOf(expr);
    if (read == nullptr) return false;
    // A variable of another unit may be the instance that contains the target.
    const bool around = inInstance && read->owner != target.owner;
    return read == &target || read->indirect || around;
  });
}

}  // namespace

std::string CallWriter::standardCallText(const Call& call) {
  switch (call.standard()->kind) {
    case FunctionKind::Operation:
    case FunctionKind::Comparison:
      return "(" + expressions_.expressionText(call.operation) + ")";
    case FunctionKind::Bound:
      return boundText(call);
    case FunctionKind::IsBound:
      return fmt::format("({} != NULL)",
                         places_.of(static_cast<const Expr&>(*call.leaf(1)->leaf(0))).text);
    case FunctionKind::Clock:
      return "((i32)vel_scan_time)";
    default:
      return expressions_.inOrder(parametersOf(call), ExpressionWriter::Uses::Once,
                                  [&] { return runtimeCallText(call, nullptr); });
  }
}

std::string CallWriter::boundText(const Call& call) {
  std::string text;
  if (call.constant != nullptr) {
    appendInteger(call.constant->value(), text);
    return text[0] == '-' ? "(" + text + ")" : text;
  }
  const auto& array = static_cast<const Expr&>(*call.leaf(1)->leaf(0));
  const ASTNode& dimension = *call.leaf(1)->leaf(1);
  const char* const member = call.standard()->cName;
  const auto number = constantInteger(dimension);
  const auto indexOf = [&](std::size_t count) {
    return number ? textOf(*number - 1)
                  : places_.subscriptText(dimension, "1", std::to_string(count));
  };
  if (const OpenArrayType* const open = asOpenArray(array.dataType)) {
    return fmt::format("((i32){}.{}[{}])", places_.of(array).load(), member,
                       indexOf(static_cast<std::size_t>(open->dimensions)));
  }
  const auto& bounds = static_cast<const ArrayType*>(array.dataType)->bounds;
  for (const Bounds& dimensions : bounds) {
    if (!text.empty()) text += ", ";
    appendInteger(std::string_view(member) == "low" ? dimensions.low : dimensions.high, text);
  }
  return fmt::format("((const i32[]){{{}}}[{}])", text, indexOf(bounds.size()));
}

std::string CallWriter::inPlaceText(const Call& call, const Expr& target) {
  const VarSymbol* const variable = variableOf(target);
  if (call.standard() == nullptr || !makesText(*call.standard()) || variable == nullptr ||
      !sharesNoMemory(*variable, *call.leaf(1))) {
    return {};
  }
  return expressions_.inOrder(parametersOf(call), ExpressionWriter::Uses::Once,
                              [&] { return runtimeCallText(call, &target); });
}

std::string CallWriter::runtimeCallText(const Call& call, const Expr* target) {
  const StandardFunction& function = *call.standard();
  const vel::ASTNode& list = *call.leaf(1);
  const bool narrow = typeOf(*list.leaf(0)) == BasicDataType::String;
  std::string text = fmt::format("vel_{}_{}(", narrow ? "string" : "wstring", function.cName);
  if (makesText(function)) {
    int length = stringLength(*call.dataType);
    if (target != nullptr) {
      text += places_.of(*target).load();
      length = std::min(length, stringLength(*target->dataType));
    } else {
      text += body_.temporary(call.dataType);
    }
    text += fmt::format(", {}", length + 1);
  }
  const bool counted = function.extensible;
  if (counted) {
    text += fmt::format(", {}, (const {}*[]){{", list.leavesCount(), narrow ? "char" : "u16");
  }
  for (int i = 0; i < list.leavesCount(); ++i) {
    if (text.back() != '(' && text.back() != '{') text += ", ";
    if (function.takesText(i)) {
      text += expressions_.expressionText(list.leaf(i));
    } else {
      expressions_.converted(*list.leaf(i), BasicDataType::LInt, text);
    }
  }
  return text + (counted ? "})" : ")");
}

}  // namespace refhost
