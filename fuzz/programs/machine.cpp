#include <fmt/format.h>

#include <algorithm>

#include "fuzz/programs/operators.h"
#include "fuzz/programs/programs.h"

namespace generated {
namespace {

enum class Flow { Next, Exit, Continue, Return };

// A place is the path to it, as `prefix` and `theB1.v2[1,3].m1`. A function's prefix ends in "()".
class Machine {
 public:
  explicit Machine(const Units& units) : units_(units) {}

  std::map<std::string, Value> run() {
    const Unit& program = units_.list.back();
    try {
      enter(units_.list.front(), "");
      enter(program, "");
      for (int i = 0; i < kScans; ++i) execute(program.body, "");
    } catch (Undefined& reason) {
      reason.statement = current_;
      throw;
    }
    return std::move(slots_);
  }

 private:
  using Frame = const std::string&;  // before the names of a unit's variables

  // ---- Places ----

  void copy(const std::string& to, const std::string& from) {
    const Value& value = slots_.at(from);
    slots_[to] = value;
    for (const Part& part : partsOf(*value.type)) copy(to + part.name, from + part.name);
  }

  // With the value or the values that are given, else the initial one.
  void create(const std::string& path, const Value& initial, const Expr& given) {
    const Type& type = *initial.type;
    if (type.kind == Type::Block) {
      enter(*type.block, path + '.');
      return;
    }
    slots_[path] = {&type};
    if (!type.whole()) assign(path, given.type != nullptr ? given.value : initial);
    std::size_t next = 0;
    for (const Part& part : partsOf(type)) {
      const bool further = next < given.operands.size();
      create(path + part.name, part.initial, further ? given.operands[next++] : Expr());
    }
  }

  void enter(const Unit& unit, Frame prefix) {
    for (const Variable& each : unit.variables) {
      if (each.role == Variable::InOut) continue;
      create(prefix + each.name, initialOf(*each.type), each.initial);
    }
  }

  void assign(const std::string& path, const Value& value) {
    Value& slot = slots_.at(path);
    const Type& type = *slot.type;
    if (type.whole()) {
      copy(path, value.text);
      return;
    }
    slot = converted(type, value);
    slot.type = &type;
    if (type.text()) {
      slot.text.resize(std::min(slot.text.size(), static_cast<std::size_t>(type.length)));
    }
  }

  std::string place(const Expr& expr, Frame prefix) {
    if (expr.kind == Expr::Global) return expr.text;
    if (expr.kind == Expr::Variable) {
      const auto reference = references_.find(prefix + expr.text);
      return reference != references_.end() ? reference->second : prefix + expr.text;
    }
    const Expr& base = expr.operands[0];
    std::string path = place(base, prefix);
    if (expr.kind == Expr::Member) return path + '.' + expr.text;
    const bool array = base.type->kind == Type::Array;
    if (!array) path = slots_.at(path).text;
    std::vector<long> at;
    for (std::size_t i = 1; i < expr.operands.size(); ++i) {
      const Wide number = evaluate(expr.operands[i], prefix).number;
      const auto [first, last] = array ? base.type->bounds[i - 1] : std::pair(-9L, 9L);
      at.push_back(static_cast<long>(std::clamp<Wide>(number, first, last)));
    }
    if (array) return fmt::format("{}[{}]", path, fmt::join(at, ","));
    if (path.empty()) throw Undefined("a pointer to nothing");
    if (!at.empty() && at[0] != 0) path = moved(path, at[0]);
    return path;
  }

  // The element of an array that is so many behind another.
  std::string moved(const std::string& path, long by) {
    const std::size_t open = path.back() == ']' ? path.rfind('[') : path.size();
    if (path.find(',', open) != std::string::npos || open == path.size()) {
      throw Undefined("no row of elements");
    }
    const long to = std::stol(path.substr(open + 1)) + by;
    std::string result = fmt::format("{}[{}]", path.substr(0, open), to);
    if (slots_.count(result) == 0) throw Undefined("a place behind the array");
    return result;
  }

  // ---- Expressions ----

  // Later changes do not reach it.
  Value kept(const Type& type, const std::string& path) {
    if (!type.whole()) return slots_.at(path);
    const std::string copied = fmt::format("#{}", ++copies_);
    copy(copied, path);
    return {&type, 0, 0, copied};
  }

  Value evaluate(const Expr& expr, Frame prefix) {
    if (expr.kind == Expr::Literal) return expr.value;
    if (expr.kind == Expr::Address) return {expr.type, 0, 0, place(expr.operands[0], prefix)};
    if (expr.kind < Expr::Address) return kept(*expr.type, place(expr, prefix));
    if (expr.kind == Expr::Operation) {
      Values values;
      for (const Expr& operand : expr.operands) values.push_back(evaluate(operand, prefix));
      return expr.op->evaluate(*expr.type, values);
    }
    const std::string frame = prefix + expr.unit->name + "()";
    pass(*expr.unit, expr.operands, prefix, frame);
    const Statement* const caller = current_;
    execute(expr.unit->body, frame);
    current_ = caller;
    return kept(*expr.type, frame + expr.unit->name);
  }

  // Gives the parameters their values; the frame of a function begins with them.
  void pass(const Unit& unit, const std::vector<Expr>& arguments, Frame prefix, Frame frame) {
    const std::vector<Variable> parameters = parametersOf(unit);
    Values values;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
      const Expr& expr = arguments[i];
      const bool refers = parameters[i].role == Variable::InOut;
      values.push_back(expr.type == nullptr ? Value{nullptr}
                       : refers             ? Value{expr.type, 0, 0, place(expr, prefix)}
                                            : evaluate(expr, prefix));
    }
    if (unit.kind == Unit::Function) enter(unit, frame);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
      const std::string name = frame + parameters[i].name;
      if (parameters[i].role == Variable::InOut) {
        references_[name] = values[i].text;
      } else if (values[i].type != nullptr) {
        assign(name, values[i]);
      }
    }
  }

  // ---- Statements ----

  void tick(const Statement& statement) {
    constexpr int kMaxSteps = 5000;
    current_ = &statement;
    if (++steps_ > kMaxSteps) throw Undefined("a program that takes too long");
  }

  Flow execute(const Statements& statements, Frame prefix) {
    for (const Statement& statement : statements) {
      const Flow flow = execute(statement, prefix);
      if (flow != Flow::Next) return flow;
    }
    return Flow::Next;
  }

  Flow execute(const Statement& statement, Frame prefix) {
    tick(statement);
    Flow flow = Flow::Next;
    switch (statement.kind) {
      case Statement::Assign: {
        const std::string target = place(statement.target, prefix);
        assign(target, evaluate(statement.exprs[0], prefix));
        return flow;
      }
      case Statement::If:
      case Statement::Case: {
        const bool cases = statement.kind == Statement::Case;
        const Wide selector = cases ? evaluate(statement.exprs[0], prefix).number : 0;
        const auto taken = [&](std::size_t i) {
          if (!cases) return evaluate(statement.exprs[i], prefix).number != 0;
          const auto& [first, last] = statement.labels[i];
          return selector >= first.value.number && selector <= last.value.number;
        };
        const std::size_t count = cases ? statement.labels.size() : statement.exprs.size();
        std::size_t i = 0;
        while (i < count && !taken(i)) ++i;
        return i < statement.bodies.size() ? execute(statement.bodies[i], prefix) : flow;
      }
      case Statement::For:
        return executeFor(statement, prefix);
      case Statement::While:
      case Statement::Repeat: {
        const bool first = statement.kind == Statement::While;
        const auto goesOn = [&] {
          return (evaluate(statement.exprs[0], prefix).number != 0) == first;
        };
        for (bool more = !first || goesOn(); more; more = goesOn()) {
          flow = execute(statement.bodies[0], prefix);
          if (flow == Flow::Exit || flow == Flow::Return) break;
          tick(statement);
        }
        return flow == Flow::Return ? flow : Flow::Next;
      }
      case Statement::Block: {
        const std::string frame = place(statement.target, prefix) + '.';
        const Unit& block = *statement.target.type->block;
        pass(block, statement.exprs, prefix, frame);
        execute(block.body, frame);
        return flow;
      }
      case Statement::Exit:
        return Flow::Exit;
      case Statement::Continue:
        return Flow::Continue;
      default:
        return Flow::Return;
    }
  }

  // The variable goes beyond the end only where its type lets it, else it wraps.
  Flow executeFor(const Statement& statement, Frame prefix) {
    const std::string control = place(statement.target, prefix);
    assign(control, evaluate(statement.exprs[0], prefix));
    const Wide last = evaluate(statement.exprs[1], prefix).number;
    const Wide step = evaluate(statement.exprs[2], prefix).number;
    const auto within = [&](Wide n) { return step >= 0 ? n <= last : n >= last; };
    for (bool more = within(slots_.at(control).number); more;) {
      const Flow flow = execute(statement.bodies[0], prefix);
      if (flow == Flow::Return) return flow;
      if (flow == Flow::Exit) break;
      const Value& value = slots_.at(control);
      const Wide next = value.number + step;
      more = step != 0 && within(next);
      assign(control, integer(*value.type, next));
      tick(statement);
    }
    return Flow::Next;
  }

  const Units& units_;
  std::map<std::string, Value> slots_;
  std::map<std::string, std::string> references_;  // of in-out parameters
  const Statement* current_ = nullptr;
  int steps_ = 0;
  int copies_ = 0;
};

}  // namespace

std::map<std::string, Value> evaluated(const Units& units) { return Machine(units).run(); }

}  // namespace generated
