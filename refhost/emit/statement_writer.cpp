#include "refhost/emit/statement_writer.h"

#include <fmt/format.h>

#include "hostkit/literal_text.h"
#include "refhost/semantics/constants.h"

namespace refhost {

using vel::ASTNode;

namespace {

// `wide`: the selector is a ULINT, so a negative lower bound of a range becomes 0.
std::string labelText(const ASTNode& label, bool wide) {
  const Integer value = constantInteger(label).value_or(0);
  std::string text;
  appendInteger(wide && value < 0 ? 0 : value, text);
  return text;
}

bool labelFits(const ASTNode& label, BasicDataType type) {
  if (kindOf(label) == NodeKind::Range) {
    return labelFits(*label.leaf(0), type) && labelFits(*label.leaf(1), type);
  }
  const auto constant = constantOf(label);
  return constant && constant->fits(type);
}

bool allLabelsFit(const ASTNode& node, BasicDataType type) {
  for (int i = 1; i < node.leavesCount(); ++i) {
    if (kindOf(*node.leaf(i)) != NodeKind::CaseElement) continue;
    const ASTNode& labels = *node.leaf(i)->leaf(0);
    for (int k = 0; k < labels.leavesCount(); ++k) {
      if (!labelFits(*labels.leaf(k), type)) return false;
    }
  }
  return true;
}

// The type in which a CASE compares its selector with its labels: its own if C compares it with
// them as signed numbers, else LINT or ULINT.
BasicDataType selectorType(const ASTNode& node) {
  const BasicDataType own = typeOf(*node.leaf(0));
  if (own == BasicDataType::ULInt) return own;
  const bool promoted = isSigned(own) || own == BasicDataType::USInt || own == BasicDataType::UInt;
  return promoted && allLabelsFit(node, own) ? own : BasicDataType::LInt;
}

// A ULINT selector never equals a negative label, which C would convert to a large number.
std::string labelCondition(const ASTNode& labels, const std::string& selector, bool wide) {
  const bool several = labels.leavesCount() > 1;
  std::string condition;
  for (int i = 0; i < labels.leavesCount(); ++i) {
    const ASTNode& label = *labels.leaf(i);
    const bool isRange = kindOf(label) == NodeKind::Range;
    const Integer last = constantInteger(isRange ? *label.leaf(1) : label).value_or(0);
    if (i > 0) condition += " || ";
    if (wide && last < 0) {
      condition += '0';
    } else if (isRange) {
      const std::string range =
          fmt::format("{0} >= {1} && {0} <= {2}", selector, labelText(*label.leaf(0), wide),
                      labelText(*label.leaf(1), wide));
      condition += several ? "(" + range + ")" : range;
    } else {
      condition += fmt::format("{} == {}", selector, labelText(label, wide));
    }
  }
  return condition;
}

// The end of a FOR that is no constant of the type of the control variable. C compares and counts
// in 64 bits with the sign of that type, which the end may exceed.
class LoopEnd {
 public:
  LoopEnd(const ASTNode& end, BasicDataType type)
      : type_(type), wide_(type == BasicDataType::ULInt) {
    const auto constant = constantInteger(end);
    inside_ = constant ? fits(*constant, type) : widens(typeOf(end), type) || typeOf(end) == type;
    unsigned_ = wide_ ? inside_ || !isSigned(typeOf(end)) : typeOf(end) == BasicDataType::ULInt;
  }

  bool isUnsigned() const { return unsigned_; }

  // `value`, of the 64 bits in which the loop counts, compared with the end.
  std::string comparison(const std::string& value, std::string_view order,
                         const std::string& end) const {
    const bool up = order == "<=";
    if (unsigned_ == wide_) return fmt::format("{} {} {}", value, order, end);
    if (wide_) {
      return fmt::format("({1} {2} 0 {3} {0} {4} (u64){1})", value, end, up ? ">=" : "<",
                         up ? "&&" : "||", order);
    }
    return fmt::format("({1} {2} INT64_MAX {3} {0} {4} (i64){1})", value, end,
                       up ? ">" : "<=", up ? "||" : "&&", order);
  }

  // The last value of the type on the way to the end, once the loop is on this way.
  std::string reachable(const std::string& end) const {
    if (inside_) return end;
    if (wide_) return unsigned_ ? end : fmt::format("{0} < 0 ? 0u : (u64){0}", end);
    const Integer size = elementaryType(type_) != nullptr ? elementaryType(type_)->size : 8;
    const Integer values = Integer{1} << (8 * size);
    const Integer high = isSigned(type_) ? values / 2 - 1 : values - 1;
    std::string low;
    std::string most;
    appendInteger(high - values + 1, low);
    appendInteger(high, most);
    const char* const cast = unsigned_ ? "(i64)" : "";
    const std::string above = fmt::format("{0} > {1} ? {1} : ", end, most);
    if (unsigned_) return above + cast + end;
    return above + fmt::format("{0} < {1} ? {1} : {0}", end, low);
  }

 private:
  BasicDataType type_;
  bool wide_;
  bool inside_ = false;
  bool unsigned_ = false;
};

}  // namespace

void StatementWriter::openBlock(const std::string& head, const ASTNode* list) {
  body_.line(head + " {");
  body_.indent();
  statements(list);
  body_.outdent();
}

void StatementWriter::statements(const ASTNode* list) {
  for (int i = 0; list != nullptr && i < list->leavesCount(); ++i) {
    if (list->leaf(i) != nullptr) statement(*list->leaf(i));
  }
}

void StatementWriter::statement(const ASTNode& node) {
  body_.at(node);
  switch (statementKindOf(node)) {
    case StatementKind::Assignment:
      body_.simpleStatement([&] { assignment(node); });
      break;
    case StatementKind::Bind:
      body_.simpleStatement([&] { bind(node); });
      break;
    case StatementKind::Call:
      body_.simpleStatement([&] { callStatement(static_cast<const Call&>(*node.leaf(0))); });
      break;
    case StatementKind::If:
      ifStatement(node);
      break;
    case StatementKind::Case:
      caseStatement(node);
      break;
    case StatementKind::For:
      forStatement(node);
      break;
    case StatementKind::While:
      body_.at(*node.leaf(0));
      openBlock(fmt::format("while ({})", expressions_.condition(*node.leaf(0))), node.leaf(1));
      body_.line("}");
      break;
    case StatementKind::Repeat: {
      openBlock("do", node.leaf(0));
      body_.at(*node.leaf(1));
      std::string condition;
      expressions_.operand(*node.leaf(1), condition);
      body_.statement(fmt::format("}} while (!{})", condition));
      break;
    }
    case StatementKind::Exit:
      body_.statement("break");
      break;
    case StatementKind::Continue:
      body_.statement("continue");
      break;
    case StatementKind::Return:
      body_.returns = true;
      body_.statement("goto vel_return");
      break;
  }
}

void StatementWriter::bind(const ASTNode& node) {
  const auto& reference = static_cast<const Expr&>(*node.leaf(0));
  const auto& target = static_cast<const Expr&>(*node.leaf(1));
  if (reference.kind == ExprKind::Member)
    holdBefore(static_cast<const Expr&>(*reference.leaf(0)), target);
  body_.statement(places_.bind(places_.of(reference), reference.dataType, target));
}

// Evaluates the place to which something is stored before `source`.
void StatementWriter::holdBefore(const Expr& place, const ASTNode& source) {
  const bool held = file_.effects.any() && (file_.effects.in(place) ||
                                            (file_.effects.in(source) && places_.canMove(place)));
  const std::string pointer = held ? places_.hold(place) : std::string();
  if (!pointer.empty()) body_.line(pointer);
}

void StatementWriter::assignment(const ASTNode& node) {
  const ASTNode& source = *node.leaf(1);
  BasicDataType from = typeOf(source);
  if (kindOf(source) == NodeKind::Invocation) {
    const vel::SymbolDataType* const type = static_cast<const Call&>(source).dataType;
    if (type != nullptr) from = valueType(type);
  }
  const auto& target = static_cast<const Expr&>(*node.leaf(0));
  if (kindOf(source) != NodeKind::Invocation) {
    holdBefore(target, source);
    body_.statement(places_.store(target, expressions_.expressionText(node.leaf(1)), from));
    return;
  }
  const auto& call = static_cast<const Call&>(source);
  const std::string flag = beginEnabled(call);
  holdBefore(target, source);
  const std::string made = calls_.inPlaceText(call, target);
  if (!made.empty()) {
    body_.statement(made);
  } else {
    const std::string value =
        typeOf(target) != from ? calls_.typedText(call) : calls_.plainText(call);
    body_.statement(places_.store(target, value, from));
  }
  endEnabled(call, flag);
}

void StatementWriter::ifStatement(const ASTNode& node) {
  const int count = node.leavesCount();
  for (int i = 0; i + 1 < count; i += 2) {
    body_.at(*node.leaf(i));
    const std::string condition = expressions_.condition(*node.leaf(i));
    openBlock(fmt::format("{}if ({})", i == 0 ? "" : "} else ", condition), node.leaf(i + 1));
  }
  if (count % 2 == 1) openBlock("} else", node.leaf(count - 1));
  body_.line("}");
}

// Written as if statements: in a C switch, EXIT would leave the switch and not the loop.
void StatementWriter::caseStatement(const ASTNode& node) {
  body_.at(*node.leaf(0));
  const bool labelled = node.leavesCount() > 1 && kindOf(*node.leaf(1)) == NodeKind::CaseElement;
  if (!labelled) {
    body_.statement(fmt::format("(void)({})", expressions_.expressionText(node.leaf(0))));
    if (node.leavesCount() > 1) statements(node.leaf(1));
    return;
  }
  const BasicDataType type = selectorType(node);
  const bool wide = type == BasicDataType::ULInt;
  const std::string name = body_.temporary(file_.services.symbols.elementary(type));
  body_.statement(fmt::format("{} = {}", name, expressions_.expressionText(node.leaf(0))));
  for (int i = 1; i < node.leavesCount(); ++i) {
    const ASTNode& element = *node.leaf(i);
    const char* const before = i == 1 ? "" : "} else ";
    if (kindOf(element) == NodeKind::CaseElement) {
      const std::string condition = labelCondition(*element.leaf(0), name, wide);
      // As in a switch of C: a breakpoint at a label is meant for its statements.
      body_.at(*node.leaf(0));
      openBlock(fmt::format("{}if ({})", before, condition), element.leaf(1));
    } else {
      openBlock("} else", &element);
    }
  }
  body_.line("}");
}

// Constant bounds whose end plus one step is within the type need no check against overflow.
bool StatementWriter::countingLoop(const ASTNode& node) {
  const auto& control = static_cast<const Expr&>(*node.leaf(0)->leaf(0));
  const ElementaryType* const row = elementaryType(typeOf(control));
  const auto end = constantInteger(*node.leaf(1));
  const auto step =
      node.leaf(2) != nullptr ? constantInteger(*node.leaf(2)) : std::optional<Integer>(1);
  if (!end || !step || row == nullptr) return false;
  if (!fits(*end, row->type) || !fits(*end + *step, row->type)) return false;
  assignment(*node.leaf(0));
  const std::string variable = places_.of(control).load();
  std::string bound;
  appendInteger(*end, bound);
  const std::string next = fmt::format("{0} = ({1})((u64){0} {2} {3}u)", variable, row->cType,
                                       *step < 0 ? '-' : '+', *step < 0 ? -*step : *step);
  openBlock(fmt::format("for (; {} {} {}; {})", variable, *step < 0 ? ">=" : "<=", bound, next),
            node.leaf(3));
  body_.line("}");
  return true;
}

// The bounds are evaluated once. The loop ends before its variable would overflow, so that FOR to
// the highest value of a type is no endless loop.
void StatementWriter::forStatement(const ASTNode& node) {
  const auto& control = static_cast<const Expr&>(*node.leaf(0)->leaf(0));
  const BasicDataType type = typeOf(control);
  if (countingLoop(node)) return;
  const bool wide = type == BasicDataType::ULInt;
  const LoopEnd end(*node.leaf(1), type);
  const vel::SymbolDataType* const bound = file_.services.symbols.elementary(
      end.isUnsigned() ? BasicDataType::ULInt : BasicDataType::LInt);
  assignment(*node.leaf(0));

  const std::string variable = places_.of(control).load();
  const std::string last = body_.temporary(bound);
  body_.statement(fmt::format("{} = {}", last, expressions_.expressionText(node.leaf(1))));
  std::string step = "1";
  std::string ascending = "1";
  // A step of more than LINT holds can only count up.
  const bool wideStep = node.leaf(2) != nullptr && typeOf(*node.leaf(2)) == BasicDataType::ULInt;
  if (node.leaf(2) != nullptr) {
    if (const auto constant = constantInteger(*node.leaf(2))) {
      step.clear();
      appendInteger(*constant, step);
      ascending = *constant > 0 ? "1" : "0";
    } else {
      step = body_.temporary(
          file_.services.symbols.elementary(wideStep ? BasicDataType::ULInt : BasicDataType::LInt));
      body_.statement(fmt::format("{} = {}", step, expressions_.expressionText(node.leaf(2))));
      if (!wideStep) ascending.clear();
    }
  }
  const char* const wideName = wide ? "u64" : "i64";
  const std::string more = body_.temporary(file_.services.symbols.elementary(BasicDataType::Bool));
  const std::string up = end.comparison(fmt::format("({}){}", wideName, variable), "<=", last);
  const std::string down = end.comparison(fmt::format("({}){}", wideName, variable), ">=", last);
  const std::string start = ascending == "1"   ? up
                            : ascending == "0" ? down
                                               : fmt::format("{} >= 0 ? {} : {}", step, up, down);
  const std::string next =
      fmt::format("{} = vel_for_{}_{}({}, {}, {})", more, wideStep ? "up" : "more", wideName,
                  variable, end.reachable(last), step);
  const char* const cName = elementaryType(type) != nullptr ? elementaryType(type)->cType : "i64";
  const std::string advance =
      places_.store(control, fmt::format("({})((u64){} + (u64)({}))", cName, variable, step), type);
  openBlock(fmt::format("for ({} = {}; {}; {}, {})", more, start, more, next, advance),
            node.leaf(3));
  body_.line("}");
}

}  // namespace refhost
