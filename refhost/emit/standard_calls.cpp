// Calls of the standard's functions in C.
#include <fmt/format.h>

#include "refhost/emit/c_generator.h"
#include "refhost/services/standard_functions.h"

namespace refhost {

using Kind = StandardFunction::Kind;

std::string CGenerator::standardText(const Call& call) {
  switch (call.standard->kind) {
    case Kind::Operation:
    case Kind::Comparison:
      return "(" + expressionText(call.leaf(2)) + ")";
    case Kind::Clock:
      return "((i32)vel_scan_time)";
    default:
      return inOrder(parametersOf(call), false, [&] { return runtimeText(call); });
  }
}

// A text is made in a buffer of the call's own. More inputs than the function has are
// joined to it one by one.
std::string CGenerator::runtimeText(const Call& call) {
  const StandardFunction& function = *call.standard;
  const vel::ASTNode& list = *call.leaf(1);
  const BasicDataType kind = likelyType(*list.leaf(0));
  const std::string name = fmt::format(
      "vel_{}_{}(", kind == BasicDataType::String ? "string" : "wstring", function.cName);
  std::string buffer;
  if (function.kind != Kind::Count) {
    buffer = fmt::format("{}, {}", temporary(call.dataType), stringLength(*call.dataType) + 1);
  }
  std::string text = name + buffer;
  for (int i = 0; i < list.leavesCount(); ++i) {
    if (i >= function.inputs()) text = fmt::format("{}{}, {})", name, buffer, text);
    if (text.back() != '(') text += ", ";
    if (function.takesText(i)) {
      text += expressionText(list.leaf(i));
    } else {
      converted(*list.leaf(i), BasicDataType::LInt, text);
    }
  }
  return text + ")";
}

}  // namespace refhost
