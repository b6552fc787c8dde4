#include "fuzz/programs/generator.h"

#include <fmt/format.h>

#include <algorithm>

#include "fuzz/programs/machine.h"
#include "fuzz/programs/operators.h"

namespace generated {
namespace {

constexpr int kDepth = 3;

std::string replaced(std::string name, const char* mark, const std::string& text) {
  const std::size_t at = name.find(mark);
  return at == std::string::npos ? name : name.replace(at, 2, text);
}

const Operator& named(const char* name) {
  return *std::find_if(operators().begin(), operators().end(),
                       [=](const Operator& row) { return row.name == name; });
}

Expr operation(const Operator& op, const Type& type, std::vector<Expr> operands) {
  Expr expr{Expr::Operation, &type, replaced(op.name, "$r", type.name)};
  expr.text = replaced(expr.text, "$0", operands[0].type->name);
  expr.op = &op;
  expr.operands = std::move(operands);
  return expr;
}

class Generator {
 public:
  Generator(std::uint64_t seed, std::string suffix) : random_(seed), suffix_(std::move(suffix)) {}

  Units units() {
    for (int i = random_.below(3); i > 0; --i) addUnit(Unit::Function, fmt::format("F{}", i));
    for (int i = random_.below(3); i > 0; --i) addUnit(Unit::FunctionBlock, fmt::format("B{}", i));
    addUnit(Unit::Program, "P");
    return std::move(units_);
  }

 private:
  enum class Bare { Never, AsItself, Always };

  // ---- Expressions ----

  Wide wholeNumber(const Type& type) {
    const Wide lowest = type.kind == Type::Unsigned ? 0 : -(Wide{1} << (type.bits - 1));
    const Wide highest = lowest + (Wide{1} << type.bits) - 1;
    switch (random_.below(5)) {
      case 0:
        return lowest + random_.below(2);
      case 1:
        return highest - random_.below(2);
      case 2:
        return integer(type, static_cast<Wide>(random_.bits())).number;
      default:
        return std::max<Wide>(lowest, random_.below(30) - 10);
    }
  }

  // Reals are such that a REAL and an LREAL both hold them, since a literal reaches C with
  // all its digits whatever its type.
  Expr literal(const Type& type, Bare bare) {
    Expr expr{Expr::Literal, &type};
    expr.value = {&type};
    bool itself = false;
    switch (type.kind) {
      case Type::Bool:
        expr.value = boolean(random_.chance(50));
        itself = true;
        break;
      case Type::Signed:
      case Type::Unsigned:
        return integerLiteral(type, wholeNumber(type), bare);
      case Type::Real:
        expr.value.real =
            random_.chance(20)
                ? std::vector<double>{0, 1e10, -1, 16777216, 0.5, 2.5}[static_cast<std::size_t>(
                      random_.below(6))]
                : (random_.below(4001) - 2000) / 64.0;
        itself = type.bits == 32;
        break;
      case Type::Text:
      case Type::WideText:
        return textLiteral(type);
      default: {
        constexpr Wide kDay = 86400;
        const Wide n = type.kind == Type::Duration ? wholeNumber(type) : random_.below(2000000000);
        expr.value.number = type.kind == Type::Date        ? n / kDay * kDay
                            : type.kind == Type::TimeOfDay ? n % (kDay * 1000)
                                                           : n;
        bare = Bare::Always;
      }
    }
    expr.text = printed(expr.value);
    expr.bare = bare == Bare::Always || (bare == Bare::AsItself && itself && random_.chance(50));
    return expr;
  }

  Expr integerLiteral(const Type& type, Wide number, Bare bare) {
    Expr expr{Expr::Literal, &type};
    expr.value = {&type, number};
    expr.text = printed(expr.value);
    const bool based = number >= 0 && random_.chance(30);
    const auto magnitude = static_cast<std::uint64_t>(number);
    if (based) {
      const int base = random_.below(3);
      expr.text = base == 0   ? fmt::format("2#{:b}", magnitude)
                  : base == 1 ? fmt::format("8#{:o}", magnitude)
                              : fmt::format("16#{:X}", magnitude);
    } else if (expr.text.size() > 4 && random_.chance(30)) {
      expr.text.insert(expr.text.size() - 3, "_");
    }
    // Alone it has the smallest type that holds it.
    int bits = 8;
    const Wide sign = based || number > INT64_MAX ? 0 : 1;
    while (bits < 64 && (number >= Wide{1} << (bits - sign) || number < -(Wide{1} << (bits - 1)))) {
      bits *= 2;
    }
    const bool itself = type.alike({"", sign == 1 ? Type::Signed : Type::Unsigned, bits});
    expr.bare = bare == Bare::Always || (bare == Bare::AsItself && itself && random_.chance(70));
    return expr;
  }

  Expr textLiteral(const Type& type) {
    Expr expr{Expr::Literal, &type};
    expr.bare = true;
    expr.value = {&type};
    const char quote = type.kind == Type::Text ? '\'' : '"';
    for (int i = random_.chance(40) ? 0 : random_.below(9); i > 0; --i) {
      const char c = "kLm Zz!'\"$?\\"[random_.below(12)];
      expr.value.text += c;
      if (c == quote || c == '$') expr.text += '$';
      expr.text += c;
    }
    if (expr.text.empty()) expr.text = expr.value.text = std::to_string(random_.below(70000) - 999);
    expr.text = quote + expr.text + quote;
    return expr;
  }

  Expr variable(const Variable& variable) { return {Expr::Variable, variable.type, variable.name}; }

  Expr leaf(const Type& type, Bare bare, bool own = false) {
    std::vector<Expr> found;
    for (const Variable& each : unit().variables) {
      if (each.role == Variable::Instance && !own) {
        for (const Variable& output : unitOf(units_, each.block).variables) {
          if (output.role != Variable::Output || !output.type->alike(type)) continue;
          found.push_back({Expr::Variable, output.type, each.name + "." + output.name});
        }
      } else if (each.type != nullptr && each.type->alike(type) && each.role != Variable::Result) {
        found.push_back(variable(each));
      }
    }
    return found.empty() || random_.chance(20) ? literal(type, bare) : random_.pick(found);
  }

  Expr expression(const Type& type, int depth, Bare bare = Bare::Never) {
    if (depth <= 0 || random_.chance(15)) return leaf(type, bare);
    for (int tries = 0; tries < 40; ++tries) {
      if (random_.chance(4)) {
        const Unit& function = random_.pick(units_);
        const bool callable = function.kind == Unit::Function && &function != &unit();
        if (!callable || !resultOf(function).alike(type)) continue;
        return {Expr::Call, &type, function.name, false, {}, nullptr, inputs(function, depth - 1)};
      }
      Expr expr;
      if (operate(random_.pick(operators()), type, depth, expr)) return expr;
    }
    return leaf(type, bare);
  }

  bool operate(const Operator& op, const Type& type, int depth, Expr& expr) {
    const Types wanted = op.operands(random_, type);
    if (wanted.empty()) return false;
    const Bare bare = op.precedence > 0 || op.need == Operator::Name ? Bare::Never : Bare::AsItself;
    std::vector<Expr> operands;
    for (const Type* each : wanted) {
      const bool name = op.need == Operator::Name && operands.empty() && op.name == "SIZEOF";
      operands.push_back(name ? leaf(*each, bare, true) : expression(*each, depth - 1, bare));
    }
    if (op.name == "SEL") operands[1] = leaf(*wanted[1], Bare::Never, true);
    if (op.need == Operator::Computed && operands[0].kind == Expr::Literal) return false;
    // A literal is judged by the type to which MIN and MAX bring it.
    const bool extreme = (op.name == "MIN" || op.name == "MAX") && !wanted[0]->alike(*wanted[1]);
    for (const Expr& each : operands) {
      if (extreme && each.kind == Expr::Literal) return false;
    }
    if (op.need == Operator::Small && wanted[0]->kind == Type::Real)
      operands[0] = small(operands[0]);
    // A literal without its type is signed in C.
    if (op.need == Operator::Shift && operands[0].kind == Expr::Literal) operands[0].bare = false;
    if (op.need == Operator::Shift) operands[1] = count(*wanted[0], depth);
    const bool alike = wanted.size() == 2 && wanted[0]->alike(*wanted[1]) && wanted[0]->number();
    if (op.precedence > 0 && alike && random_.chance(30)) {
      const std::size_t at = random_.chance(70) ? 1 : 0;
      if (operands[1 - at].kind != Expr::Literal) operands[at] = literal(*wanted[at], Bare::Always);
    }
    expr = operation(op, type, std::move(operands));
    const std::string& name = expr.text;
    const std::size_t to = name.find("_TO_");
    return to == std::string::npos || name.substr(0, to) != name.substr(to + 4);
  }

  // Between 0 and 100, which every integer, time and date holds.
  Expr small(Expr operand) {
    const Type& type = *operand.type;
    const auto bound = [&](int n) {
      Expr expr{Expr::Literal, &type, fmt::format("{}.0", n)};
      expr.value = real(type, n);
      return expr;
    };
    Expr below = operation(named("MIN"), type, {std::move(operand), bound(100)});
    return operation(named("MAX"), type, {std::move(below), bound(0)});
  }

  Expr count(const Type& shifted, int depth) {
    const Type& type = *random_.pick(Types{&shifted, &generated::type(Type::Unsigned, 8)});
    if (random_.chance(60)) {
      return integerLiteral(type, random_.below(shifted.bits - 1) + 1, Bare::AsItself);
    }
    Expr width = integerLiteral(type, shifted.bits == 8 ? 7 : shifted.bits, Bare::Never);
    return operation(named("MOD"), type, {expression(type, depth - 1), std::move(width)});
  }

  // For a variable or a parameter of the type, which may be of another.
  Expr assigned(const Type& type, int depth) {
    const Type& other = random_.pick(types());
    if (random_.chance(25) && assignable(type, other)) {
      Expr expr = expression(other, depth);
      const bool strict = expr.text == "MOVE" || expr.text == "MIN" || expr.text == "MAX" ||
                          expr.text == "ROL" || expr.text == "ROR";
      if (strict ? holds(type, other) : expr.kind != Expr::Literal) return expr;
    }
    return expression(type, depth, Bare::Always);
  }

  std::vector<Expr> inputs(const Unit& callee, int depth) {
    std::vector<Expr> result;
    for (const Variable& input : callee.variables) {
      if (input.role == Variable::Input) result.push_back(assigned(*input.type, depth));
    }
    return result;
  }

  static const Type& resultOf(const Unit& function) {
    return *std::find_if(function.variables.begin(), function.variables.end(),
                         [](const Variable& v) { return v.role == Variable::Result; })
                ->type;
  }

  // ---- Statements ----

  // A variable that may be assigned; null when there is none.
  const Variable* target(bool whole) {
    for (int tries = 0; tries < 30; ++tries) {
      const Variable& found = random_.pick(unit().variables);
      const bool free =
          found.type != nullptr && found.role != Variable::Input &&
          std::find(controls_.begin(), controls_.end(), found.name) == controls_.end();
      if (free && (!whole || (found.type->integer() && found.role != Variable::Result))) {
        return &found;
      }
    }
    return nullptr;
  }

  Statements statements(int count, int depth) {
    Statements result;
    for (; count > 0; --count) addStatement(result, depth);
    return result;
  }

  void addStatement(Statements& to, int depth) {
    const int choice = depth > 0 ? random_.below(100) : 0;
    const Type& boolType = type(Type::Bool, 1);
    const auto body = [&] { return statements(1 + random_.below(3), depth - 1); };
    const Variable* const variable = target(choice >= 80);
    if (variable == nullptr) return;
    Statement result;
    if (choice < 60) {
      result.target = variable->name;
      result.exprs = {assigned(*variable->type, kDepth)};
    } else if (choice < 68) {
      result.kind = Statement::If;
      for (int i = 1 + random_.below(2); i > 0; --i) {
        result.exprs.push_back(expression(boolType, kDepth));
        result.bodies.push_back(body());
      }
      if (random_.chance(50)) result.bodies.push_back(body());
    } else if (choice < 74) {
      if (!block(result)) return;
    } else if (choice < 80) {
      if (loops_ == 0 && random_.chance(80)) return;
      result.kind = Statement::If;
      result.exprs = {expression(boolType, kDepth)};
      Statement leave;
      leave.kind = loops_ == 0          ? Statement::Return
                   : random_.chance(50) ? Statement::Exit
                                        : Statement::Continue;
      result.bodies = {{leave}};
    } else if (choice < 87) {
      result.kind = Statement::Case;
      result.exprs = {expression(*variable->type, 1)};
      for (int i = 1 + random_.below(3); i >= 0; --i) {
        result.bodies.push_back(body());
        const long first = random_.below(8) - 2;
        if (i > 0) result.labels.emplace_back(first, first + random_.below(3));
      }
    } else {
      controls_.push_back(variable->name);
      ++loops_;
      loop(result, *variable, depth);
      --loops_;
      controls_.pop_back();
    }
    to.push_back(std::move(result));
  }

  bool block(Statement& result) {
    std::vector<const Variable*> instances;
    for (const Variable& each : unit().variables) {
      if (each.role == Variable::Instance) instances.push_back(&each);
    }
    if (instances.empty()) return false;
    const Variable& instance = *random_.pick(instances);
    result.kind = Statement::Block;
    result.target = instance.name;
    result.exprs = inputs(unitOf(units_, instance.block), kDepth);
    return true;
  }

  void loop(Statement& result, const Variable& control, int depth) {
    const Type& type = *control.type;
    const Type& boolType = generated::type(Type::Bool, 1);
    result.target = control.name;
    result.bodies = {statements(1 + random_.below(3), depth - 1)};
    if (random_.chance(60)) {
      result.kind = Statement::For;
      const Wide start = wholeNumber(type);
      const bool down = type.kind == Type::Signed && random_.chance(40);
      const Wide end = integer(type, start + Wide{down ? -1 : 1} * random_.below(9)).number;
      const Wide step = Wide{1 + random_.below(3)} * (down ? -1 : 1);
      result.exprs = {
          integerLiteral(type, start, Bare::Always),
          random_.chance(60) ? integerLiteral(type, end, Bare::Always)
                             : expression(type, 1, Bare::Always),
          random_.chance(70) ? integerLiteral(type, step, Bare::Always) : variable(control)};
      return;
    }
    // The control variable counts, so that most of these end.
    result.kind = random_.chance(50) ? Statement::While : Statement::Repeat;
    const bool whileLoop = result.kind == Statement::While;
    Statement count;
    count.target = control.name;
    const Wide one = 1;
    count.exprs = {
        operation(named("+"), type, {variable(control), integerLiteral(type, one, Bare::Always)})};
    result.bodies[0].insert(result.bodies[0].begin(), count);
    Expr goes =
        operation(named(whileLoop ? "<" : ">="), boolType,
                  {variable(control), integerLiteral(type, random_.below(9), Bare::Always)});
    result.exprs = {operation(named(whileLoop ? "AND" : "OR"), boolType,
                              {std::move(goes), expression(boolType, 2)})};
  }

  // ---- Units ----

  Unit& unit() { return units_.back(); }

  void addVariable(const std::string& name, const Type& type, Variable::Role role) {
    Variable result{name, &type, role};
    if (type.text() && random_.chance(50)) result.length = 1 + random_.below(30);
    if (type.text() && role == Variable::Result) result.length = 0;
    result.initial = literal(type, Bare::Always);
    unit().variables.push_back(std::move(result));
  }

  const Type& anyType(bool texts) {
    for (;;) {
      const Type& type = random_.pick(types());
      if (texts || !type.text()) return type;
    }
  }

  void addUnit(Unit::Kind kind, const std::string& name) {
    const bool main = kind == Unit::Program;
    const bool function = kind == Unit::Function;
    units_.push_back({kind, name + suffix_, {}, {}});
    if (function) addVariable(unit().name, anyType(false), Variable::Result);
    for (int i = main ? 0 : 1 + random_.below(3); i > 0; --i) {
      addVariable(fmt::format("in{}", i), anyType(false), Variable::Input);
    }
    for (int i = kind == Unit::FunctionBlock ? 1 + random_.below(2) : 0; i > 0; --i) {
      addVariable(fmt::format("out{}", i), anyType(true), Variable::Output);
    }
    for (int i = main ? 18 : 5; i > 0; --i) {
      addVariable(fmt::format("v{}", i), anyType(true), Variable::Local);
    }
    if (main) {
      std::vector<Variable>& instances = unit().variables;
      for (const Unit& block : units_) {
        if (block.kind != Unit::FunctionBlock) continue;
        Variable instance{"the" + block.name, nullptr, Variable::Instance};
        instance.block = block.name;
        instances.push_back(std::move(instance));
      }
    }
    unit().body = statements(main ? 10 : 3, function ? 1 : 2);
    if (!function) return;
    Statement last;
    last.target = unit().name;
    last.exprs = {assigned(resultOf(unit()), kDepth)};
    unit().body.push_back(std::move(last));
  }

  Random random_;
  std::string suffix_;
  Units units_;
  std::vector<std::string> controls_;
  int loops_ = 0;
};

bool erase(Statements& from, const Statement* wanted) {
  for (std::size_t i = 0; i < from.size(); ++i) {
    if (&from[i] == wanted) {
      from.erase(from.begin() + static_cast<std::ptrdiff_t>(i));
      return true;
    }
    for (Statements& body : from[i].bodies) {
      if (erase(body, wanted)) return true;
    }
  }
  return false;
}

}  // namespace

Units generate(std::uint64_t seed, const std::string& suffix) {
  Units units = Generator(seed, suffix).units();
  // What the operands' needs do not keep from being undefined is left out.
  for (;;) {
    try {
      evaluated(units);
      return units;
    } catch (const Stuck& stuck) {
      for (Unit& unit : units) {
        if (erase(unit.body, stuck.statement)) break;
      }
    }
  }
}

}  // namespace generated
