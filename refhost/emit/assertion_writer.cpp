#include "refhost/emit/assertion_writer.h"

#include <fmt/format.h>

#include <algorithm>

#include "hostkit/literal.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"
#include "refhost/services/test_functions.h"

namespace refhost {

using vel::ASTNode;

namespace {

// The type in which the value of an operand is shown beside another one: a string literal in one
// that holds all of it, an untyped number in the other one's, and any other number in that of the
// comparison `common`, if the value there is not the same.
const vel::SymbolDataType* shownType(SymbolTable& symbols, const Expr& operand, const Expr& other,
                                     const CommonType& common) {
  const Literal* const literal = literalOf(operand);
  const BasicDataType own = typeOf(operand);
  if (literal != nullptr && literal->value.form == LiteralForm::String) {
    const int length = static_cast<int>(literal->value.text.size());
    return symbols.stringType(own, std::max(length, StringType::kDefaultLength));
  }
  const BasicDataType beside = typeOf(other);
  if (isUntypedNumber(operand) && !isUntypedNumber(other) && isNumber(beside)) {
    const auto constant = constantOf(operand);
    if (isFloat(beside) || (constant && constant->fits(beside))) return other.dataType;
  }
  const bool same = common.kind != CommonType::Kind::Number || own == common.operands ||
                    (isInteger(own) && widens(own, common.operands));
  return same ? operand.dataType : symbols.elementary(common.operands);
}

}  // namespace

void AssertionWriter::write(const Call& call) {
  const TestFunction& function = *call.testFunction();
  const ASTNode& list = *call.parameters();
  const auto operandAt = [&list](int i) { return static_cast<const Expr*>(list.leaf(i)); };
  if (!function.asserts()) {
    const Expr& time = *operandAt(0);
    const bool number = isInteger(typeOf(time));
    body_.statement(
        fmt::format("vel_test_advance({})",
                    converted(time, number ? BasicDataType::LInt : BasicDataType::LTime)));
    return;
  }
  const std::size_t number = file_.assertions.size();
  file_.assertions.push_back({&call, {}});
  std::vector<std::string> values;
  const bool shows = function.kind != TestFunction::Kind::Condition;
  const CommonType common = call.operation != nullptr ? commonType(*call.operation) : CommonType();
  for (int i = 0; shows && i < function.operands(); ++i) {
    const Expr& operand = *operandAt(i);
    const bool compared = i < 2;
    const vel::SymbolDataType* const type =
        shownType(file_.services.symbols, operand, *operandAt(i == 0 ? 1 : 0),
                  compared ? common : CommonType());
    file_.assertions.back().shown.push_back(type);
    values.push_back(hold(operand, type));
  }
  const std::string failed = failure(call, number, values);
  for (int i = 0; i < function.operands(); ++i) body_.held.erase(operandAt(i));
  std::string shown = "NULL";
  for (const std::string& value : values) {
    shown = (&value == &values.front() ? "(const void* const[]){" : shown + ", ") + "&" + value;
  }
  if (shows) shown += '}';
  std::string text = "NULL";
  if (list.leavesCount() > function.operands()) {
    text = expressions_.expressionText(list.leaf(function.operands()));
  }
  body_.statement(fmt::format("if ({}) vel_test_fail({}, {}, {})", failed, number, shown, text));
}

// Evaluates the operand into a temporary of the type, whose name is returned.
std::string AssertionWriter::hold(const Expr& operand, const vel::SymbolDataType* type) {
  const std::string name = body_.temporary(type);
  body_.statement(storeText(file_.names, type, {Place::Kind::Object, name},
                            expressions_.expressionText(const_cast<Expr*>(&operand)),
                            typeOf(operand)));
  if (!isConstant(operand)) body_.held[&operand] = name;
  return name;
}

std::string AssertionWriter::failure(const Call& call, std::size_t number,
                                     const std::vector<std::string>& values) {
  const TestFunction& function = *call.testFunction();
  const ASTNode& list = *call.parameters();
  if (function.kind == TestFunction::Kind::Condition) {
    std::string condition;
    if (function.expected) condition = "!";
    expressions_.operand(*list.leaf(0), condition);
    return condition;
  }
  if (function.kind == TestFunction::Kind::Near) return "!" + nearness(call, values);
  if (call.operation != nullptr) {
    return fmt::format("!({})", expressions_.condition(*call.operation));
  }
  return fmt::format("{}vel_test_differs({}, &{}, &{})",
                     function.comparison == ExprKind::Equal ? "" : "!", number, values[0],
                     values[1]);
}

// The C condition that two values differ by no more than the third one.
std::string AssertionWriter::nearness(const Call& call, const std::vector<std::string>& values) {
  const ASTNode& list = *call.parameters();
  const CommonType common = commonType(*call.operation);
  const BasicDataType tolerance = typeOf(*list.leaf(2));
  if (isFloat(common.operands) || isFloat(tolerance)) {
    return fmt::format("vel_test_near({}, {}, {})", values[0], values[1], values[2]);
  }
  // Times are compared in nanoseconds.
  const auto whole = [&](int i) -> std::string {
    const ASTNode& operand = *list.leaf(i);
    switch (typeOf(operand)) {
      case BasicDataType::Time:
      case BasicDataType::LTime:
        return converted(operand, BasicDataType::LTime);
      case BasicDataType::TimeOfDay:
        return values[static_cast<std::size_t>(i)] + " * 1000000ull";
      case BasicDataType::Date:
      case BasicDataType::DateAndTime:
        return values[static_cast<std::size_t>(i)] + " * 1000000000ull";
      default:
        return values[static_cast<std::size_t>(i)];
    }
  };
  return fmt::format("vel_test_near_whole({}, {}, {}, {})", expressions_.condition(*call.operation),
                     whole(0), whole(1), whole(2));
}

std::string AssertionWriter::converted(const ASTNode& node, BasicDataType type) {
  std::string text;
  expressions_.converted(node, type, text);
  return text;
}

}  // namespace refhost
