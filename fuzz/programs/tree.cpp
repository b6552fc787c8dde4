#include "fuzz/programs/tree.h"

#include <fmt/format.h>

#include <algorithm>

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
  std::string out = indent;
  switch (statement.kind) {
    case Statement::Assign:
      return out + fmt::format("{} := {};\n", statement.target, expr(0));
    case Statement::If:
      for (std::size_t i = 0; i < statement.bodies.size(); ++i) {
        if (i > 0) out += indent + "ELS";
        out += i < statement.exprs.size() ? fmt::format("IF {} THEN\n", expr(i)) : "E\n";
        out += body(i);
      }
      return out + indent + "END_IF\n";
    case Statement::Case:
      out += fmt::format("CASE {} OF\n", expr(0));
      for (std::size_t i = 0; i < statement.labels.size(); ++i) {
        const auto& [first, last] = statement.labels[i];
        out += first == last ? fmt::format("{}{}:\n", indent, first)
                             : fmt::format("{}{}..{}:\n", indent, first, last);
        out += body(i);
      }
      return out + indent + "ELSE\n" + body(statement.labels.size()) + indent + "END_CASE\n";
    case Statement::For:
      out +=
          fmt::format("FOR {} := {} TO {} BY {} DO\n", statement.target, expr(0), expr(1), expr(2));
      return out + body(0) + indent + "END_FOR\n";
    case Statement::While:
      return out + fmt::format("WHILE {} DO\n{}{}END_WHILE\n", expr(0), body(0), indent);
    case Statement::Repeat:
      return out +
             fmt::format("REPEAT\n{0}{1}UNTIL {2}\n{1}END_REPEAT\n", body(0), indent, expr(0));
    case Statement::Block:
      return out + fmt::format("{}({});\n", statement.target, list(statement.exprs));
    case Statement::Exit:
      return out + "EXIT;\n";
    case Statement::Continue:
      return out + "CONTINUE;\n";
    default:
      return out + "RETURN;\n";
  }
}

std::string text(const Statements& statements, int depth) {
  std::string out;
  for (const Statement& statement : statements) out += text(statement, depth);
  return out;
}

std::string declaration(const Variable& variable) {
  constexpr const char* kSections[] = {"VAR_INPUT", "VAR_OUTPUT", "VAR", "", "VAR"};
  const std::string length = variable.length > 0 ? fmt::format("[{}]", variable.length) : "";
  const bool instance = variable.role == Variable::Instance;
  const std::string type = instance ? variable.block : variable.type->name + length;
  const std::string initial = instance ? "" : " := " + text(variable.initial);
  return fmt::format("{} {} : {}{}; END_VAR\n", kSections[variable.role], variable.name, type,
                     initial);
}

}  // namespace

const Unit& unitOf(const Units& units, const std::string& name) {
  return *std::find_if(units.begin(), units.end(),
                       [&](const Unit& unit) { return unit.name == name; });
}

std::string text(const Expr& expr) {
  switch (expr.kind) {
    case Expr::Literal:
      return expr.bare ? expr.text : fmt::format("{}#{}", expr.type->name, expr.text);
    case Expr::Variable:
      return expr.text;
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
  for (const Unit& unit : units) {
    const char* const kind = kKinds[unit.kind];
    out += fmt::format("{} {}", kind, unit.name);
    std::string variables;
    for (const Variable& variable : unit.variables) {
      if (variable.role == Variable::Result) {
        out += fmt::format(" : {}", variable.type->name);
      } else {
        variables += declaration(variable);
      }
    }
    out += fmt::format("\n{}{}END_{}\n", variables, text(unit.body, 1), kind);
  }
  return out;
}

}  // namespace generated
