#include <algorithm>

#include "fuzz/programs/machine.h"
#include "fuzz/programs/operators.h"
#include "fuzz/programs/runner.h"

namespace generated {
namespace {

// Makes the reduction with a given number, counted along the tree.
class Reducer {
 public:
  explicit Reducer(int number) : left_(number) {}

  // False when there are not so many.
  bool reduce(Units& units) {
    for (std::size_t i = 0; i + 1 < units.size(); ++i) {
      if (mine()) return units.erase(units.begin() + static_cast<std::ptrdiff_t>(i)), true;
    }
    for (auto unit = units.rbegin(); unit != units.rend(); ++unit) {
      if (reduce(unit->body)) return true;
    }
    for (Unit& unit : units) {
      for (std::size_t i = 0; i < unit.variables.size(); ++i) {
        const bool kept = unit.variables[i].role < Variable::Local;
        if (kept || unit.variables[i].role == Variable::Result || !mine()) continue;
        return unit.variables.erase(unit.variables.begin() + static_cast<std::ptrdiff_t>(i)), true;
      }
    }
    return false;
  }

 private:
  bool mine() { return left_-- == 0; }

  bool reduce(Statements& statements) {
    for (std::size_t i = 0; i < statements.size(); ++i) {
      if (!mine()) continue;
      return statements.erase(statements.begin() + static_cast<std::ptrdiff_t>(i)), true;
    }
    for (Statement& statement : statements) {
      for (Statements& body : statement.bodies) {
        if (!mine()) continue;
        Statements inner = std::move(body);
        const auto at = statements.begin() + (&statement - statements.data());
        const auto after = statements.erase(at);
        statements.insert(after, inner.begin(), inner.end());
        return true;
      }
      for (Statements& body : statement.bodies) {
        if (reduce(body)) return true;
      }
      for (Expr& expr : statement.exprs) {
        if (reduce(expr, false)) return true;
      }
    }
    return false;
  }

  bool reduce(Expr& expr, bool computed) {
    if (expr.kind == Expr::Literal || (computed && expr.kind == Expr::Variable)) return false;
    for (Expr& operand : expr.operands) {
      if (operand.type->alike(*expr.type) && (!computed || operand.kind != Expr::Literal) &&
          mine()) {
        Expr inner = std::move(operand);
        // What the literal stood beside gave it its type.
        if (inner.kind == Expr::Literal) inner.bare = inner.type->kind >= Type::Duration;
        expr = std::move(inner);
        return true;
      }
    }
    if (!computed && mine()) {
      Expr literal{Expr::Literal, expr.type};
      literal.value = {expr.type};
      literal.text = expr.type->text() ? (expr.type->kind == Type::Text ? "''" : "\"\"")
                                       : printed(literal.value);
      literal.bare = expr.type->kind >= Type::Duration;
      expr = literal;
      return true;
    }
    for (std::size_t i = 0; i < expr.operands.size(); ++i) {
      const bool mustCompute = expr.op != nullptr && expr.op->need == Operator::Computed;
      if (reduce(expr.operands[i], mustCompute && i == 0)) return true;
    }
    return false;
  }

  int left_;
};

Outcome::Kind outcome(const Units& units, const Toolchain& toolchain) {
  try {
    Machine(units).run(kScans);
    return run({units}, toolchain).kind;
  } catch (const std::exception&) {  // undefined, or a name that is no more there
    return Outcome::Right;
  }
}

}  // namespace

Units shrunk(Units units, const Toolchain& toolchain) {
  const Outcome::Kind wanted = outcome(units, toolchain);
  for (bool smaller = wanted != Outcome::Right; smaller;) {
    smaller = false;
    for (int i = 0;;) {
      Units candidate = units;
      if (!Reducer(i).reduce(candidate)) break;
      if (outcome(candidate, toolchain) == wanted) {
        units = std::move(candidate);
        smaller = true;
      } else {
        ++i;
      }
    }
  }
  return units;
}

}  // namespace generated
