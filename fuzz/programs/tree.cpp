#include "fuzz/programs/tree.h"

#include <fmt/format.h>

#include "fuzz/programs/operators.h"

namespace generated {
namespace {

constexpr int kPrefix = 9;  // binds tighter than every infix operator

int precedence(const Expr& expr) {
  const int own = expr.kind == Expr::Operation ? expr.op->precedence : 0;
  return own == 0 ? kPrefix + 1 : own;
}

std::string list(const std::vector<Expr>& exprs) {
  std::string result;
  for (const Expr& expr : exprs) result += (result.empty() ? "" : ", ") + text(expr);
  return result;
}

// The named arguments of a call, or initial values of a structure.
template <typename Names>
std::string named(const Names& names, const std::vector<Expr>& exprs) {
  std::string result;
  for (std::size_t i = 0; i < exprs.size(); ++i) {
    if (exprs[i].type == nullptr) continue;
    result += (result.empty() ? "" : ", ") + names[i].name + " := " + text(exprs[i]);
  }
  return result;
}

// What repeats is counted.
std::string elements(const std::vector<Expr>& exprs) {
  std::string result;
  for (std::size_t i = 0, next = 0; i < exprs.size(); i = next) {
    const std::string element = text(exprs[i]);
    while (next < exprs.size() && text(exprs[next]) == element) ++next;
    result += result.empty() ? "" : ", ";
    result += next - i > 1 ? fmt::format("{}({})", next - i, element) : element;
  }
  return result;
}

// In parentheses when it binds looser than `least`.
std::string within(const Expr& expr, int least) {
  return precedence(expr) < least ? "(" + text(expr) + ")" : text(expr);
}

std::string text(const Statements& statements, int depth);

// Branches of an IF or a CASE, or the one body of a loop.
std::string text(const Statement& statement, int depth) {
  const std::string indent(static_cast<std::size_t>(depth) * 2, ' ');
  const auto expr = [&](std::size_t i) { return text(statement.exprs[i]); };
  const auto body = [&](std::size_t i) { return text(statement.bodies[i], depth + 1); };
  std::string out;
  switch (statement.kind) {
    case Statement::Assign:
      return fmt::format("{} := {};\n", text(statement.target), expr(0));
    case Statement::If:
      for (std::size_t i = 0; i < statement.bodies.size(); ++i) {
        if (i > 0) out += indent + "ELS";
        out += i < statement.exprs.size() ? fmt::format("IF {} THEN\n", expr(i)) : "E\n";
        out += body(i);
      }
      return out + indent + "END_IF\n";
    case Statement::Case:
      out = fmt::format("CASE {} OF\n", expr(0));
      for (std::size_t i = 0; i < statement.labels.size(); ++i) {
        const std::string first = text(statement.labels[i].first);
        const std::string last = text(statement.labels[i].second);
        out += first == last ? fmt::format("{}{}:\n", indent, first)
                             : fmt::format("{}{}..{}:\n", indent, first, last);
        out += body(i);
      }
      return out + indent + "ELSE\n" + body(statement.labels.size()) + indent + "END_CASE\n";
    case Statement::For:
      return fmt::format("FOR {} := {} TO {} BY {} DO\n{}{}END_FOR\n", text(statement.target),
                         expr(0), expr(1), expr(2), body(0), indent);
    case Statement::While:
      return fmt::format("WHILE {} DO\n{}{}END_WHILE\n", expr(0), body(0), indent);
    case Statement::Repeat:
      return fmt::format("REPEAT\n{0}{1}UNTIL {2}\n{1}END_REPEAT\n", body(0), indent, expr(0));
    case Statement::Block:
      return fmt::format("{}({});\n", text(statement.target),
                         named(parametersOf(*statement.target.type->block), statement.exprs));
    case Statement::Exit:
      return "EXIT;\n";
    case Statement::Continue:
      return "CONTINUE;\n";
    default:
      return "RETURN;\n";
  }
}

std::string text(const Statements& statements, int depth) {
  std::string out;
  for (const Statement& statement : statements) {
    out += std::string(static_cast<std::size_t>(depth) * 2, ' ') + text(statement, depth);
  }
  return out;
}

std::string declaration(const Variable& variable) {
  constexpr const char* kSections[] = {"VAR_INPUT", "VAR_IN_OUT",          "VAR_OUTPUT", "VAR",
                                       "",          "VAR_GLOBAL CONSTANT", "VAR_GLOBAL"};
  const bool initial = variable.initial.type != nullptr;
  return fmt::format("{} {} : {}{}; END_VAR\n", kSections[variable.role], variable.name,
                     variable.type->name, initial ? " := " + text(variable.initial) : "");
}

}  // namespace

std::vector<Variable> parametersOf(const Unit& unit) {
  std::vector<Variable> result;
  for (const Variable& each : unit.variables) {
    if (each.role <= Variable::InOut) result.push_back(each);
  }
  return result;
}

std::string text(const Expr& expr) {
  switch (expr.kind) {
    case Expr::Literal:
      return expr.bare ? expr.text : fmt::format("{}#{}", expr.type->name, expr.text);
    case Expr::Variable:
    case Expr::Global:
      return expr.text;
    case Expr::Element:
      return fmt::format("{}[{}]", text(expr.operands[0]),
                         list({expr.operands.begin() + 1, expr.operands.end()}));
    case Expr::Member:
      return text(expr.operands[0]) + '.' + expr.text;
    case Expr::Pointed:
      return text(expr.operands[0]) + '^';
    case Expr::Address:
      return fmt::format("ADR({})", text(expr.operands[0]));
    case Expr::Whole:
      return expr.type->kind == Type::Array
                 ? fmt::format("[{}]", elements(expr.operands))
                 : fmt::format("({})", named(expr.type->parts, expr.operands));
    case Expr::Call:
      return fmt::format("{}({})", expr.text, list(expr.operands));
    default:
      break;
  }
  const int own = expr.op->precedence;
  if (own == 0) return fmt::format("{}({})", expr.text, list(expr.operands));
  const Expr& first = expr.operands[0];
  if (expr.operands.size() == 1) return expr.text + ' ' + within(first, kPrefix + 1);
  return fmt::format("{} {} {}", within(first, own), expr.text, within(expr.operands[1], own + 1));
}

std::string text(const Units& units) {
  constexpr const char* kKinds[] = {"FUNCTION", "FUNCTION_BLOCK", "PROGRAM"};
  std::string out;
  for (const Type& type : units.types) {
    if (type.definition.empty()) continue;
    out += fmt::format("TYPE {} : {}; END_TYPE\n", type.name, type.definition);
  }
  for (const Unit& unit : units.list) {
    std::string variables;
    std::string result;
    for (const Variable& variable : unit.variables) {
      if (variable.role == Variable::Result) {
        result = " : " + variable.type->name;
      } else {
        variables += declaration(variable);
      }
    }
    out += unit.kind == Unit::Globals
               ? variables
               : fmt::format("{0} {1}{2}\n{3}{4}END_{0}\n", kKinds[unit.kind], unit.name, result,
                             variables, text(unit.body, 1));
  }
  return out;
}

}  // namespace generated
