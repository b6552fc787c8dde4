#include "fuzz/programs/machine.h"

#include <algorithm>

#include "fuzz/programs/operators.h"

namespace generated {
namespace {

enum class Flow { Next, Exit, Continue, Return };

class Machine {
 public:
  explicit Machine(const Units& units) : units_(units) {}

  std::map<std::string, Value> run() {
    try {
      enter(units_.back(), "");
      for (int i = 0; i < kScans; ++i) execute(units_.back().body, "");
    } catch (const Undefined& reason) {
      throw Stuck(reason, current_);
    }
    std::map<std::string, Value> values;
    for (const auto& [name, slot] : slots_) values[name] = slot.value;
    return values;
  }

 private:
  struct Slot {
    Value value;
    int length;
  };

  void enter(const Unit& unit, const std::string& prefix) {
    for (const Variable& variable : unit.variables) {
      if (variable.role == Variable::Instance) {
        enter(unitOf(units_, variable.block), prefix + variable.name + ".");
        continue;
      }
      constexpr int kLength = 80;
      Slot& slot = slots_[prefix + variable.name];
      slot = {{variable.type}, variable.length > 0 ? variable.length : kLength};
      if (variable.role != Variable::Result) assign(prefix + variable.name, variable.initial.value);
    }
  }

  void assign(const std::string& name, const Value& value) {
    Slot& slot = slots_.at(name);
    slot.value = converted(*slot.value.type, value);
    slot.value.text.resize(std::min(slot.value.text.size(), static_cast<std::size_t>(slot.length)));
  }

  Value evaluate(const Expr& expr, const std::string& prefix) {
    if (expr.kind == Expr::Literal) return expr.value;
    if (expr.kind == Expr::Variable) return slots_.at(prefix + expr.text).value;
    Values values;
    for (const Expr& operand : expr.operands) values.push_back(evaluate(operand, prefix));
    if (expr.kind == Expr::Operation) return expr.op->evaluate(*expr.type, values);
    const Unit& function = unitOf(units_, expr.text);
    const std::string frame = prefix + expr.text + "()";
    enter(function, frame);
    std::size_t next = 0;
    for (const Variable& input : function.variables) {
      if (input.role == Variable::Input) assign(frame + input.name, values[next++]);
    }
    const Statement* const caller = current_;
    execute(function.body, frame);
    current_ = caller;
    return slots_.at(frame + expr.text).value;
  }

  bool holds(const Expr& condition, const std::string& prefix) {
    return evaluate(condition, prefix).number != 0;
  }

  void tick(const Statement& statement) {
    constexpr int kMaxSteps = 5000;
    current_ = &statement;
    if (++steps_ > kMaxSteps) throw Undefined("a program that takes too long");
  }

  Flow execute(const Statements& statements, const std::string& prefix) {
    for (const Statement& statement : statements) {
      const Flow flow = execute(statement, prefix);
      if (flow != Flow::Next) return flow;
    }
    return Flow::Next;
  }

  Flow execute(const Statement& statement, const std::string& prefix) {
    tick(statement);
    Flow flow = Flow::Next;
    switch (statement.kind) {
      case Statement::Assign:
        assign(prefix + statement.target, evaluate(statement.exprs[0], prefix));
        return flow;
      case Statement::If:
      case Statement::Case: {
        const bool cases = statement.kind == Statement::Case;
        const Wide selector = cases ? evaluate(statement.exprs[0], prefix).number : 0;
        std::size_t i = 0;
        if (cases) {
          while (i < statement.labels.size() &&
                 (selector < statement.labels[i].first || selector > statement.labels[i].second)) {
            ++i;
          }
        } else {
          while (i < statement.exprs.size() && !holds(statement.exprs[i], prefix)) ++i;
        }
        return i < statement.bodies.size() ? execute(statement.bodies[i], prefix) : flow;
      }
      case Statement::For:
        return executeFor(statement, prefix);
      case Statement::While:
      case Statement::Repeat: {
        const bool first = statement.kind == Statement::While;
        while (!first || holds(statement.exprs[0], prefix)) {
          flow = execute(statement.bodies[0], prefix);
          if (flow == Flow::Exit || flow == Flow::Return) break;
          tick(statement);
          if (!first && holds(statement.exprs[0], prefix)) break;
        }
        return flow == Flow::Return ? flow : Flow::Next;
      }
      case Statement::Block:
        executeBlock(statement, prefix);
        return flow;
      case Statement::Exit:
        return Flow::Exit;
      case Statement::Continue:
        return Flow::Continue;
      default:
        return Flow::Return;
    }
  }

  // The variable goes beyond the end only where its type lets it, else it wraps.
  Flow executeFor(const Statement& statement, const std::string& prefix) {
    const std::string control = prefix + statement.target;
    assign(control, evaluate(statement.exprs[0], prefix));
    const Wide last = evaluate(statement.exprs[1], prefix).number;
    const Wide step =
        integer(type(Type::Signed, 64), evaluate(statement.exprs[2], prefix).number).number;
    const auto within = [&](Wide n) { return step >= 0 ? n <= last : n >= last; };
    for (bool more = within(slots_.at(control).value.number); more;) {
      const Flow flow = execute(statement.bodies[0], prefix);
      if (flow == Flow::Return) return flow;
      if (flow == Flow::Exit) break;
      const Value& value = slots_.at(control).value;
      const Wide next = value.number + step;
      more = step != 0 && within(next);
      assign(control, integer(*value.type, next));
      tick(statement);
    }
    return Flow::Next;
  }

  void executeBlock(const Statement& statement, const std::string& prefix) {
    const auto& variables = units_.back().variables;
    const auto instance =
        std::find_if(variables.begin(), variables.end(),
                     [&](const Variable& each) { return each.name == statement.target; });
    const Unit& block = unitOf(units_, instance->block);
    const std::string frame = prefix + statement.target + ".";
    std::size_t next = 0;
    for (const Variable& input : block.variables) {
      if (input.role == Variable::Input) {
        assign(frame + input.name, evaluate(statement.exprs[next++], prefix));
      }
    }
    execute(block.body, frame);
  }

  const Units& units_;
  std::map<std::string, Slot> slots_;  // `prefix` and name
  const Statement* current_ = nullptr;
  int steps_ = 0;
};

}  // namespace

std::map<std::string, Value> evaluated(const Units& units) { return Machine(units).run(); }

}  // namespace generated
