#include <algorithm>
#include <utility>

#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

void Statements::analyseStatements(ASTNode* list) {
  const ASTNode* jump = nullptr;
  for (int i = 0; list != nullptr && i < list->leavesCount(); ++i) {
    if (list->leaf(i) == nullptr) continue;
    ASTNode& statement = *list->leaf(i);
    if (jump != nullptr) return analyseUnreachable(*list, i, *jump);
    if (analyseStatement(statement)) jump = &statement;
  }
}

// Those of `list` from index `from` on, which stand behind `jump`.
void Statements::analyseUnreachable(ASTNode& list, int from, const ASTNode& jump) {
  const std::size_t first = messages_.count();
  for (int i = from; i < list.leavesCount(); ++i) {
    if (list.leaf(i) != nullptr) analyseStatement(*list.leaf(i));
  }
  messages_.dropWarnings(first);
  parts_.doubts.judgeUnreachable(*list.leaf(from), jump);
}

bool Statements::analyseStatement(ASTNode& statement) {
  switch (statementKindOf(statement)) {
    case StatementKind::Assignment: {
      const std::size_t first = messages_.count();
      analyseAssignment(statement);
      if (context_.judgesReads) {
        parts_.doubts.noteWrite(static_cast<const Expr&>(*statement.leaf(0)));
      }
      if (kindOf(*statement.leaf(1)) != NodeKind::Invocation && !hasErrorFrom(first)) {
        parts_.doubts.judgeAssignment(statement);
      }
      break;
    }
    case StatementKind::Bind:
      analyseBinding(statement);
      break;
    case StatementKind::Call:
      parts_.calls.analyseCall(static_cast<Call&>(*statement.leaf(0)));
      break;
    case StatementKind::If:
      analyseIf(statement);
      break;
    case StatementKind::Case:
      analyseCase(statement);
      break;
    case StatementKind::For:
      analyseFor(statement);
      break;
    case StatementKind::While:
      analyseCondition(statement, 0);
      ++loops_;
      analyseStatements(statement.leaf(1));
      --loops_;
      break;
    case StatementKind::Repeat:
      ++loops_;
      analyseStatements(statement.leaf(0));
      --loops_;
      analyseCondition(statement, 1);
      break;
    case StatementKind::Exit:
    case StatementKind::Continue:
      if (loops_ == 0) say(statement, message::kOutsideLoop, TreeBuilder::source(statement));
      return loops_ != 0;
    case StatementKind::Return:
      return true;
  }
  return false;
}

void Statements::analyseAssignment(ASTNode& statement, bool checks) {
  const Expr& target = parts_.expressions.analyseTarget(statement, 0);
  ASTNode& source = *statement.leaf(1);
  const Type* type = nullptr;
  const Call* operatorCall = nullptr;
  if (kindOf(source) == NodeKind::Invocation) {
    auto& call = static_cast<Call&>(source);
    type = parts_.calls.analyseCall(call, target.dataType);
    parts_.calls.requireValue(call, type);
    if (!call.accepted) type = nullptr;
    if (call.op() != nullptr) operatorCall = &call;
  } else {
    type = parts_.expressions.analyseLeaf(statement, 1, target.dataType).dataType;
  }
  const SourceRange& whole = static_cast<const Assignment&>(statement).sourceRange;
  if (checks && parts_.expressions.requireWritable(target))
    parts_.assignments.check(target.dataType, type, source, whole, operatorCall);
}

void Statements::analyseBinding(ASTNode& statement) {
  const Expr& target = parts_.expressions.analyseTarget(statement, 0);
  const Expr& source = parts_.expressions.analyseLeaf(statement, 1);
  if (target.dataType == nullptr) return;
  const VarSymbol* const reference = referenceNamed(target);
  if (reference == nullptr) {
    say(target, message::kNotAReference, TreeBuilder::source(target));
  } else if (!isBindable(target)) {
    say(target, message::kNotWritable, TreeBuilder::source(target));
  } else {
    parts_.assignments.checkBound(reference->name(), target.dataType, source);
  }
}

void Statements::analyseIf(ASTNode& statement) {
  const int count = statement.leavesCount();
  for (int i = 0; i + 1 < count; i += 2) {
    analyseCondition(statement, i);
    analyseStatements(statement.leaf(i + 1));
  }
  if (count % 2 == 1) analyseStatements(statement.leaf(count - 1));
}

void Statements::analyseCondition(ASTNode& parent, int index) {
  const Type* const wanted = services_.symbols.elementary(BasicDataType::Bool);
  const Expr& condition = parts_.expressions.analyseLeaf(parent, index, wanted);
  const BasicDataType type = typeOf(condition);
  if (type != BasicDataType::None && type != BasicDataType::Bool) {
    say(condition, message::kCondition, describe(condition));
  }
}

void Statements::analyseCase(ASTNode& statement) {
  const Expr& selector = parts_.expressions.analyseLeaf(statement, 0);
  const BasicDataType type = typeOf(selector);
  const bool chooses = isInteger(type);
  if (type != BasicDataType::None && !chooses) {
    say(selector, message::kSelector, describe(selector));
  }
  std::vector<Label> labels;
  for (int i = 1; i < statement.leavesCount(); ++i) {
    ASTNode& element = *statement.leaf(i);
    if (kindOf(element) == NodeKind::CaseElement) {
      if (chooses) analyseLabels(*element.leaf(0), selector, labels);
      analyseStatements(element.leaf(1));
    } else {
      analyseStatements(&element);
    }
  }
  warnOfRepeated(labels);
}

void Statements::analyseLabels(ASTNode& labels, const Expr& selector, std::vector<Label>& found) {
  for (int i = 0; i < labels.leavesCount(); ++i) {
    ASTNode& label = *labels.leaf(i);
    const bool range = kindOf(label) == NodeKind::Range;
    const auto low = range ? labelValue(label, 0, selector) : labelValue(labels, i, selector);
    const auto high = range ? labelValue(label, 1, selector) : low;
    if (!low || !high) continue;
    if (*low > *high) {
      say(label, message::kEmptyRange, TreeBuilder::source(label));
    } else {
      parts_.doubts.judgeLabel(*labels.leaf(i), selector, {*low, *high});
    }
    // A negative number is no value of the selector.
    const Integer first =
        typeOf(selector) == BasicDataType::ULInt ? std::max<Integer>(*low, 0) : *low;
    if (first <= *high) found.push_back({first, *high, labels.leaf(i)});
  }
}

std::optional<Integer> Statements::labelValue(ASTNode& parent, int index, const Expr& selector) {
  const Seeking seeking(context_, Sought::Constant);
  const Expr& label = parts_.expressions.analyseLeaf(parent, index, selector.dataType);
  const bool named = isEnumeration(label.dataType) && isEnumeration(selector.dataType);
  if (named && label.dataType != selector.dataType) {
    say(label, message::kCannotConvert, displayName(label.dataType),
        displayName(selector.dataType));
    return {};
  }
  const auto value = parts_.expressions.requireConstant(parent, index);
  const bool comparable =
      !value || typeOf(selector) == BasicDataType::ULInt || fits(*value, BasicDataType::LInt);
  if (comparable) return value;
  say(label, message::kConstantTooLarge, TreeBuilder::source(label),
      displayName(selector.dataType));
  return {};
}

void Statements::warnOfRepeated(std::vector<Label>& labels) {
  std::stable_sort(labels.begin(), labels.end(),
                   [](const Label& a, const Label& b) { return a.low < b.low; });
  const Label* widest = nullptr;
  bool reported = false;  // of the values of `widest`
  for (const Label& label : labels) {
    if (widest != nullptr && label.low <= widest->high && !std::exchange(reported, true)) {
      const bool later = label.node->pos().offset() > widest->node->pos().offset();
      const ASTNode& again = later ? *label.node : *widest->node;
      const ASTNode& first = later ? *widest->node : *label.node;
      say(again, message::kRepeatedLabel, TreeBuilder::source(again))
          .note(rangeOf(first), "the other label stands here");
    }
    if (widest != nullptr && label.high <= widest->high) continue;
    widest = &label;
    reported = false;
  }
}

void Statements::analyseFor(ASTNode& statement) {
  ASTNode& start = *statement.leaf(0);
  const Expr& control = parts_.expressions.analyseTarget(start, 0);
  const BasicDataType type = typeOf(control);
  const bool counts = isInteger(type) && control.kind != ExprKind::Part;
  if (type != BasicDataType::None && !counts) {
    say(control, message::kControlVariable, TreeBuilder::source(control));
  }
  analyseAssignment(start, counts);
  const Expr& end = parts_.expressions.analyseLeaf(statement, 1, control.dataType);
  if (counts) parts_.assignments.check(control.dataType, end.dataType, end);
  if (statement.leaf(2) != nullptr) {
    const Expr& step = parts_.expressions.analyseLeaf(statement, 2);
    const BasicDataType stepType = typeOf(step);
    if (stepType != BasicDataType::None && !isInteger(stepType)) {
      if (counts) parts_.assignments.check(control.dataType, step.dataType, step);
    }
    if (constantInteger(step) == 0) say(step, message::kStepZero);
  }
  parts_.doubts.judgeLoop(statement);
  ++loops_;
  analyseStatements(statement.leaf(3));
  --loops_;
}

}  // namespace refhost
