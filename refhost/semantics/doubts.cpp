#include "refhost/semantics/doubts.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

bool isZero(const ASTNode& value) {
  if (const Literal* const literal = literalOf(value)) {
    if (literal->value.form == LiteralForm::Real) return literal->value.real == 0;
  }
  return constantInteger(value) == 0;
}

bool compares(ExprKind op, Integer a, Integer b) {
  switch (op) {
    case ExprKind::Equal:
      return a == b;
    case ExprKind::NotEqual:
      return a != b;
    case ExprKind::Less:
      return a < b;
    case ExprKind::LessEqual:
      return a <= b;
    case ExprKind::Greater:
      return a > b;
    default:
      return a >= b;
  }
}

// True of places that are the same but for blanks and the case of letters.
bool samePlace(std::string_view one, std::string_view other) {
  const auto withoutBlanks = [](std::string_view text) {
    std::string words;
    std::remove_copy_if(text.begin(), text.end(), std::back_inserter(words),
                        [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); });
    return words;
  };
  return equalIgnoringCase(withoutBlanks(one), withoutBlanks(other));
}

bool isIntegerDivision(const ASTNode& value) {
  return value.type() == vel::ASTType::Expression && isInteger(typeOf(value)) &&
         static_cast<const Expr&>(value).kind == ExprKind::Divide;
}

// The values of an integer type.
Bounds valuesOf(BasicDataType type) {
  const Integer count = static_cast<Integer>(1) << 8 * elementaryType(type)->size;
  const Integer low = isSigned(type) ? -(count / 2) : 0;
  return {low, low + count - 1};
}

}  // namespace

void Doubts::judgeBinary(const Expr& expr, const CommonType& common) {
  if (expr.kind == ExprKind::Divide || expr.kind == ExprKind::Modulo) judgeDivisor(expr, common);
  if (common.kind != CommonType::Kind::Number) return;
  if (isComparison(expr.kind)) judgeComparison(expr, common);
  if (!isFloat(common.operands)) return;
  for (int i = 0; i < 2; ++i) {
    const auto& operand = static_cast<const Expr&>(*expr.leaf(i));
    if (!isIntegerDivision(operand)) continue;
    judgeConversion(operand, *operand.dataType, *services_.symbols.elementary(common.operands));
  }
}

void Doubts::judgeDivisor(const Expr& expr, const CommonType& common) {
  const ASTNode& divisor = *expr.leaf(1);
  if (!isZero(divisor)) return;
  doubt(divisor, message::kDivisionByZero, TreeBuilder::source(divisor),
        isFloat(common.operands) ? "infinity or NaN" : "0");
}

void Doubts::judgeComparison(const Expr& expr, const CommonType& common) {
  const bool equality = expr.kind == ExprKind::Equal || expr.kind == ExprKind::NotEqual;
  const ASTNode& left = *expr.leaf(0);
  const ASTNode& right = *expr.leaf(1);
  if (isFloat(common.operands)) {
    // Whether a divisor is 0 can be asked.
    if (equality && !isZero(left) && !isZero(right)) {
      doubt(expr, message::kRealEquality, TreeBuilder::source(expr));
    }
    return;
  }
  const auto first = constantInteger(left);
  const auto second = constantInteger(right);
  if (first.has_value() == second.has_value()) return;
  const Integer number = first ? *first : *second;
  const BasicDataType type = typeOf(first ? right : left);
  if (!isInteger(type)) return;
  const Bounds values = valuesOf(type);
  const Integer low = values.low;
  const Integer high = values.high;
  for (const Integer compared : {number, low, high}) {
    if (!fits(compared, common.operands)) return;
  }
  const auto with = [&](Integer value) {
    return first ? compares(expr.kind, number, value) : compares(expr.kind, value, number);
  };
  const bool inside = low <= number && number <= high;
  if (with(low) != with(high) || (equality && inside)) return;
  doubt(expr, message::kAlwaysSo, TreeBuilder::source(expr), with(low) ? "TRUE" : "FALSE",
        displayName(static_cast<const Expr&>(first ? right : left).dataType), textOf(low),
        textOf(high));
}

void Doubts::judgeLabel(const ASTNode& label, const Expr& selector, const Bounds& values) {
  const Bounds all = valuesOf(typeOf(selector));
  if (values.high >= all.low && values.low <= all.high) return;
  const std::string compared =
      std::string(TreeBuilder::source(selector)).append(" = ").append(TreeBuilder::source(label));
  doubt(label, message::kAlwaysSo, compared, "FALSE", displayName(selector.dataType),
        textOf(all.low), textOf(all.high));
}

void Doubts::judgeAssignment(const ASTNode& statement) {
  const auto& target = static_cast<const Expr&>(*statement.leaf(0));
  const ASTNode& source = *statement.leaf(1);
  const ExprKind kind = static_cast<const Expr&>(source).kind;
  if (target.dataType == nullptr) return;
  if (kind != target.kind || (kind != ExprKind::Variable && !isAccess(kind))) return;
  const std::string_view text = TreeBuilder::source(target);
  const bool calls = text.find('(') != std::string_view::npos;
  if (calls || !samePlace(text, TreeBuilder::source(source))) return;
  doubt(statement, message::kSelfAssignment, text);
}

void Doubts::judgeLoop(const ASTNode& loop) {
  const auto start = constantInteger(*loop.leaf(0)->leaf(1));
  const auto end = constantInteger(*loop.leaf(1));
  if (!start || !end) return;
  const auto step = loop.leaf(2) != nullptr ? constantInteger(*loop.leaf(2)) : Integer{1};
  const bool never = step && ((*step > 0 && *start > *end) || (*step < 0 && *start < *end));
  if (!never) return;
  doubt(*loop.leaf(1), message::kNeverRuns, textOf(*start), textOf(*end), textOf(*step));
}

void Doubts::judgeConversion(const ASTNode& value, const Type& from, const Type& to) {
  if (!isFloat(to.dataType()) || !isInteger(from.dataType()) || !isIntegerDivision(value)) return;
  const auto dividend = constantInteger(*value.leaf(0));
  const auto divisor = constantInteger(*value.leaf(1));
  if (dividend && divisor && *divisor != 0 && *dividend % *divisor == 0) return;
  doubt(value, message::kIntegerDivision, TreeBuilder::source(value), displayName(&to));
}

void Doubts::judgeUnreachable(const ASTNode& statement, const ASTNode& jump) {
  const std::string_view word = TreeBuilder::source(jump);
  if (context_.broken) return;
  say(statement, message::kUnreachable, word)
      .note(rangeOf(jump), "the " + std::string(word) + " stands here");
}

}  // namespace refhost
