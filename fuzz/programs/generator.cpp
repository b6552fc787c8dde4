#include <fmt/format.h>

#include <algorithm>

#include "fuzz/programs/operators.h"
#include "fuzz/programs/programs.h"

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

// A text of any length.
const Type& plain(const Type& of) { return of.text() ? type(of.kind, of.bits) : of; }

Expr operation(const Operator& op, const Type& type, std::vector<Expr> operands) {
  Expr expr{Expr::Operation, &type, replaced(op.name, "$r", type.name)};
  expr.text = replaced(expr.text, "$0", plain(*operands[0].type).name);
  expr.op = &op;
  expr.operands = std::move(operands);
  return expr;
}

class Generator {
 public:
  Generator(std::uint64_t seed, std::string suffix) : random_(seed), suffix_(std::move(suffix)) {}

  Units units() {
    addGlobals();
    for (int i = random_.below(4); i > 0; --i) addUnit(Unit::Function, fmt::format("F{}", i));
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
      case Type::Enumeration: {
        const auto& [name, number] = random_.pick(type.names);
        return {Expr::Literal, &type, name, bare == Bare::Always, {&type, number}};
      }
      case Type::Pointer:
        return {Expr::Literal, &type, "NULL", true, {&type}};
      case Type::Array:
      case Type::Structure: {
        expr.kind = Expr::Whole;
        const bool array = type.kind == Type::Array;
        long size = static_cast<long>(type.parts.size());
        if (array) size = 1;
        for (const auto& [first, last] : type.bounds) size *= last - first + 1;
        for (int i = random_.below(static_cast<int>(size)) + 1; i > 0; --i) {
          const std::size_t at = expr.operands.size();
          expr.operands.push_back(
              literal(array ? *type.element : *type.parts[at].initial.type, bare));
        }
        return expr;
      }
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

  // A constant expression of the value, of constants before it when there are any.
  Expr constant(const Type& type, Wide number, Bare bare) {
    if (random_.chance(50)) return integerLiteral(type, number, bare);
    Expr expr = term(type);
    for (int i = random_.below(3); i > 0; --i) {
      expr = folded(random_.pick(std::vector{"+", "-", "*", "XOR", "OR"}), std::move(expr),
                    term(type));
    }
    const Wide rest = integer(type, number - expr.value.number).number;
    return folded("+", std::move(expr), integerLiteral(type, rest, Bare::Never));
  }

  Expr term(const Type& type) {
    std::vector<Expr> found;
    for (const Variable& each : units_.list.front().variables) {
      if (each.role != Variable::Constant || each.type != &type) continue;
      found.push_back(variable(each));
      found.back().value = each.initial.value;
    }
    return found.empty() ? integerLiteral(type, wholeNumber(type), Bare::Never)
                         : random_.pick(found);
  }

  static Expr folded(const char* name, Expr a, Expr b) {
    const Operator& op = named(name);
    const Type& type = *a.type;
    const Value value = op.evaluate(type, {a.value, b.value});
    Expr expr = operation(op, type, {std::move(a), std::move(b)});
    expr.value = value;
    return expr;
  }

  // ---- Places ----

  enum class Access { Read, Write, Refer };

  Expr variable(const Variable& variable) {
    const bool global = variable.role >= Variable::Constant;
    return {global ? Expr::Global : Expr::Variable, variable.type, variable.name};
  }

  bool allows(const Variable& each, Access access) const {
    if (access == Access::Read) return each.role != Variable::Result;
    const auto named = [&](const Expr& control) { return control.text == each.name; };
    return each.role != Variable::Input && each.role != Variable::Constant &&
           std::none_of(controls_.begin(), controls_.end(), named) &&
           (access == Access::Write || each.role != Variable::Result);
  }

  // Elements, members and what it points to, one level down; of subscripts there are none yet.
  static std::vector<Expr> partsOf(const Expr& place, Access access) {
    const Type& type = *place.type;
    std::vector<Expr> result;
    const auto add = [&](Expr::Kind kind, const Type& part, const std::string& name) {
      result.push_back({kind, &part, name});
      result.back().operands = {place};
    };
    if (type.kind == Type::Array || type.kind == Type::Pointer) {
      add(Expr::Element, *type.element, "");
    }
    if (type.kind == Type::Pointer) add(Expr::Pointed, *type.element, "");
    for (const Part& part : type.parts) {
      if (type.kind == Type::Structure || access == Access::Read) {
        add(Expr::Member, *part.initial.type, part.name);
      }
    }
    if (type.kind == Type::Block && access == Access::Write) {
      for (const Variable& each : type.block->variables) {
        if (each.role == Variable::Input) add(Expr::Member, *each.type, each.name);
      }
    }
    return result;
  }

  template <typename Wanted>
  void collect(std::vector<Expr>& found, const Expr& place, Access access, Wanted wanted) {
    if (wanted(*place.type)) found.push_back(place);
    for (const Expr& part : partsOf(place, access)) collect(found, part, access, wanted);
  }

  template <typename Wanted>
  std::vector<Expr> places(Access access, Wanted wanted) {
    std::vector<Expr> found;
    for (const Unit* each : {&unit(), &units_.list.front()}) {
      for (const Variable& one : each->variables) {
        if (allows(one, access)) collect(found, variable(one), access, wanted);
      }
      if (each == &units_.list.front()) break;
    }
    return found;
  }

  // With subscripts.
  Expr complete(Expr place) {
    if (place.operands.empty()) return place;
    place.operands[0] = complete(std::move(place.operands[0]));
    if (place.kind != Expr::Element) return place;
    const Type& type = *place.operands[0].type;
    if (type.kind == Type::Pointer) {
      place.operands.push_back(
          integerLiteral(generated::type(Type::Signed, 16), random_.below(3) - 1, Bare::Always));
    }
    for (const auto& bound : type.bounds) place.operands.push_back(subscript(bound));
    return place;
  }

  // What is constant is within the bounds.
  Expr subscript(std::pair<long, long> bound) {
    ++nesting_;
    Expr result;
    if (nesting_ < 3 && random_.chance(60)) {
      const Type& type = any([](const Type& each) { return each.integer(); });
      result = expression(type, 1);
    }
    --nesting_;
    if (result.type != nullptr && varies(result)) return result;
    const int count = static_cast<int>(bound.second - bound.first) + 1;
    return constant(type(Type::Signed, 16), bound.first + random_.below(count), Bare::Always);
  }

  static bool varies(const Expr& expr) {
    if (expr.kind == Expr::Variable) return true;
    return expr.text != "SIZEOF" && std::any_of(expr.operands.begin(), expr.operands.end(), varies);
  }

  // Without a type when there is no such array or structure.
  Expr leaf(const Type& type, Bare bare) {
    const std::vector<Expr> found =
        places(Access::Read, [&](const Type& each) { return each.alike(type); });
    const bool none = found.empty() || (!type.whole() && random_.chance(20));
    if (!none) return complete(random_.pick(found));
    if (type.whole()) return {};
    if (type.kind != Type::Pointer || random_.chance(5)) return literal(type, bare);
    return address(type);
  }

  Expr address(const Type& type) {
    const std::vector<Expr> found =
        places(Access::Refer, [&](const Type& each) { return &each == type.element; });
    if (found.empty()) return literal(type, Bare::Always);
    Expr expr{Expr::Address, &type};
    expr.operands = {complete(random_.pick(found))};
    return expr;
  }

  Expr expression(const Type& wanted, int depth, Bare bare = Bare::Never) {
    const Type& type = plain(wanted);
    if (depth <= 0 || random_.chance(15)) return leaf(type, bare);
    for (int tries = 0; tries < 40; ++tries) {
      Expr called{Expr::Call, &type};
      if (random_.chance(8) && call(called, depth - 1)) return called;
      if (type.kind >= Type::Enumeration) return leaf(type, bare);
      if (type.kind == Type::Bool && random_.chance(3) && compare(called)) return called;
      Expr expr;
      if (operate(random_.pick(operators()), type, depth, expr)) return expr;
    }
    return leaf(type, bare);
  }

  bool call(Expr& expr, int depth) {
    std::vector<const Unit*> found;
    for (const Unit& each : units_.list) {
      const bool earlier = each.kind == Unit::Function && &each != &unit();
      if (earlier && resultOf(each).alike(*expr.type)) found.push_back(&each);
    }
    if (found.empty()) return false;
    const Unit& function = *random_.pick(found);
    expr.unit = &function;
    expr.text = function.name;
    return arguments(expr.operands, function, depth);
  }

  // Two values of an enumeration, or two pointers.
  bool compare(Expr& expr) {
    const std::vector<Expr> found = places(Access::Read, [](const Type& each) {
      return each.kind == Type::Enumeration || each.kind == Type::Pointer;
    });
    if (found.empty()) return false;
    Expr first = complete(random_.pick(found));
    Expr second = expression(*first.type, 1, Bare::Always);
    expr = operation(named(random_.chance(50) ? "=" : "<>"), *expr.type,
                     {std::move(first), std::move(second)});
    return true;
  }

  bool operate(const Operator& op, const Type& type, int depth, Expr& expr) {
    const Types wanted = op.operands(random_, type);
    if (wanted.empty()) return false;
    const Bare bare = op.precedence > 0 || op.need == Operator::Name ? Bare::Never : Bare::AsItself;
    std::vector<Expr> operands;
    for (const Type* each : wanted) {
      const bool name = op.need == Operator::Name && operands.empty() && op.name == "SIZEOF";
      operands.push_back(name ? leaf(*each, bare) : expression(*each, depth - 1, bare));
      if (op.need == Operator::Position && each->integer() && random_.chance(70)) {
        operands.back() = integerLiteral(*each, random_.below(8), bare);
      }
    }
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

  // False when there is no variable for a parameter.
  bool arguments(std::vector<Expr>& to, const Unit& callee, int depth) {
    for (const Variable& each : parametersOf(callee)) {
      if (each.role == Variable::Input) {
        const bool left = callee.kind != Unit::Function && random_.chance(10);
        to.push_back(left ? Expr() : assigned(*each.type, depth));
        if (!left && to.back().type == nullptr) return false;
        continue;
      }
      const std::vector<Expr> found =
          places(Access::Refer, [&](const Type& type) { return &type == each.type; });
      if (found.empty()) return false;
      to.push_back(complete(random_.pick(found)));
    }
    return true;
  }

  static const Type& resultOf(const Unit& function) {
    return *std::find_if(function.variables.begin(), function.variables.end(),
                         [](const Variable& v) { return v.role == Variable::Result; })
                ->type;
  }

  // ---- Statements ----

  // What may be assigned, which has a type; else there is none.
  Expr target() {
    for (int tries = 0; tries < 30; ++tries) {
      const Unit& from = random_.chance(10) ? units_.list.front() : unit();
      const Variable& one = random_.pick(from.variables);
      if (!allows(one, Access::Write)) continue;
      Expr place = variable(one);
      for (;;) {
        const std::vector<Expr> parts = partsOf(place, Access::Write);
        const bool assigns = isHeld(*place.type);
        if (assigns && (parts.empty() || random_.chance(25))) return complete(place);
        if (parts.empty()) break;
        place = random_.pick(parts);
      }
    }
    return {};
  }

  // A variable for a loop or a CASE.
  Expr counter() {
    for (int tries = 0; tries < 30; ++tries) {
      const Variable& one = random_.pick(unit().variables);
      const bool fits = one.type->integer() && one.role != Variable::Result;
      if (fits && allows(one, Access::Write)) return variable(one);
    }
    return {};
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
    Statement result;
    result.target = choice < 60 ? target() : counter();
    if (result.target.type == nullptr) return;
    const Expr counted = result.target;
    if (choice < 60) {
      result.exprs = {assigned(*counted.type, kDepth)};
      if (result.exprs[0].type == nullptr) return;
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
      result.exprs = {selector(*counted.type)};
      const Type& type = *result.exprs[0].type;
      for (int i = 1 + random_.below(3); i >= 0; --i) {
        result.bodies.push_back(body());
        if (i > 0) result.labels.push_back(label(type));
      }
    } else {
      controls_.push_back(counted);
      ++loops_;
      loop(result, depth);
      --loops_;
      controls_.pop_back();
    }
    to.push_back(std::move(result));
  }

  // An enumeration at times.
  Expr selector(const Type& type) {
    const std::vector<Expr> found =
        places(Access::Read, [](const Type& each) { return each.kind == Type::Enumeration; });
    return found.empty() || random_.chance(60) ? expression(type, 1)
                                               : complete(random_.pick(found));
  }

  std::pair<Expr, Expr> label(const Type& type) {
    if (type.kind == Type::Enumeration) {
      const Expr one = literal(type, random_.chance(70) ? Bare::Always : Bare::Never);
      return {one, one};
    }
    const Wide first = random_.below(8) - (type.kind == Type::Signed ? 2 : 0);
    return {constant(type, first, Bare::Always),
            constant(type, first + random_.below(3), Bare::Always)};
  }

  bool block(Statement& result) {
    const std::vector<Expr> found =
        places(Access::Write, [](const Type& each) { return each.kind == Type::Block; });
    if (found.empty()) return false;
    result.kind = Statement::Block;
    result.target = complete(random_.pick(found));
    return arguments(result.exprs, *result.target.type->block, kDepth);
  }

  void loop(Statement& result, int depth) {
    const Expr& control = result.target;
    const Type& type = *control.type;
    const Type& boolType = generated::type(Type::Bool, 1);
    result.bodies = {statements(1 + random_.below(3), depth - 1)};
    if (random_.chance(60)) {
      result.kind = Statement::For;
      const Wide start = wholeNumber(type);
      const bool down = type.kind == Type::Signed && random_.chance(40);
      const Wide end = integer(type, start + Wide{down ? -1 : 1} * random_.below(9)).number;
      const Wide step = Wide{1 + random_.below(3)} * (down ? -1 : 1);
      result.exprs = {integerLiteral(type, start, Bare::Always),
                      random_.chance(60) ? constant(type, end, Bare::Always)
                                         : expression(type, 1, Bare::Always),
                      random_.chance(70) ? constant(type, step, Bare::Always) : control};
      return;
    }
    // The control variable counts, so that most of these end.
    result.kind = random_.chance(50) ? Statement::While : Statement::Repeat;
    const bool whileLoop = result.kind == Statement::While;
    Statement count;
    count.target = control;
    count.exprs = {operation(named("+"), type, {control, integerLiteral(type, 1, Bare::Always)})};
    result.bodies[0].insert(result.bodies[0].begin(), count);
    Expr goes = operation(named(whileLoop ? "<" : ">="), boolType,
                          {control, integerLiteral(type, random_.below(9), Bare::Always)});
    result.exprs = {operation(named(whileLoop ? "AND" : "OR"), boolType,
                              {std::move(goes), expression(boolType, 2)})};
  }

  // ---- Units ----

  Unit& unit() { return units_.list.back(); }

  template <typename Wanted>
  const Type& any(Wanted wanted) {
    for (;;) {
      const bool derived = !units_.types.empty() && random_.chance(35);
      const Type& type = derived ? random_.pick(units_.types) : random_.pick(types());
      if (wanted(type)) return type;
    }
  }

  static bool isValue(const Type& type) {
    return type.kind == Type::Array ? isValue(*type.element)
                                    : type.kind < Type::Pointer || type.kind == Type::Structure;
  }
  static bool isHeld(const Type& type) { return type.kind == Type::Pointer || isValue(type); }

  void addVariable(const std::string& name, const Type& type, Variable::Role role) {
    Variable result{name, &type, role};
    const bool block =
        type.kind == Type::Block || (type.kind == Type::Array && type.element->kind == Type::Block);
    const bool bare =
        type.kind != Type::Pointer && !block && role != Variable::InOut && role != Variable::Result;
    if (bare && (role == Variable::Constant || random_.chance(80))) {
      result.initial = role == Variable::Constant && type.integer()
                           ? constant(type, wholeNumber(type), Bare::Always)
                           : literal(type, Bare::Always);
    }
    unit().variables.push_back(std::move(result));
  }

  // Constants and types first, which need each other, then variables.
  void addGlobals() {
    units_.list.push_back({Unit::Globals, ""});
    int count = 0;
    const auto add = [&](const Type& type, Variable::Role role) {
      addVariable(fmt::format("g{}{}", ++count, suffix_), type, role);
    };
    add(type(Type::Signed, 16), Variable::Constant);
    for (int i = random_.below(6); i > 0; --i) add(random_.pick(types()), Variable::Constant);
    for (int i = 2 + random_.below(7); i > 0; --i) addType(i);
    for (int i = 1 + random_.below(3); i > 0; --i) addBlock(random_.pick(standardBlocks()));
    for (int i = random_.below(4); i > 0; --i) add(any(isValue), Variable::Global);
  }

  void addType(int index) {
    Type made{fmt::format("T{}{}", index, suffix_), Type::Text};
    static const std::vector<std::string> kColors = {"Red", "Green", "Blue", "Black", "White"};
    switch (random_.below(7)) {
      case 0: {
        made.kind = Type::Enumeration;
        const Type& base = random_.pick(types());
        long number = -1;
        for (std::size_t i = static_cast<std::size_t>(random_.below(3)); i < kColors.size(); ++i) {
          number = random_.chance(60) ? number + 1 : random_.below(100);
          made.definition +=
              fmt::format("{}{} := {}", made.names.empty() ? "(" : ", ", kColors[i], number);
          made.names.emplace_back(kColors[i], number);
        }
        made.definition += ")";
        if (base.integer()) made.definition += ' ' + base.name;
        break;
      }
      case 1:
      case 2:
        made.kind = Type::Structure;
        made.definition = "STRUCT ";
        for (int i = 1 + random_.below(3); i > 0; --i) {
          const Type& type = any(isValue);
          const Expr initial = literal(type, Bare::Always);
          const bool has = !type.whole() && random_.chance(30);
          made.parts.push_back({fmt::format("m{}", i), has ? initial.value : Value{&type}});
          made.definition +=
              fmt::format("m{} : {}{}; ", i, type.name, has ? " := " + text(initial) : "");
        }
        made.definition += "END_STRUCT";
        break;
      case 3:
        made.kind = random_.chance(70) ? Type::Text : Type::WideText;
        made.bits = made.kind == Type::Text ? 8 : 16;
        made.length = 1 + random_.below(30);
        made.name = fmt::format("{}[{}]", plain(made).name, made.length);
        break;
      case 4:
        made.kind = Type::Pointer;
        made.element = &any(isValue);
        made.name = "POINTER TO " + made.element->name;
        break;
      default:
        array(made, any(isValue));
    }
    units_.types.push_back(std::move(made));
  }

  void array(Type& made, const Type& element) {
    made.kind = Type::Array;
    made.element = &element;
    std::string ranges;
    const Type& type = generated::type(Type::Signed, 16);
    for (int i = random_.chance(75) ? 1 : 2; i > 0; --i) {
      const long first = random_.below(6) - 3;
      const long last = first + random_.below(4) + (i == 1 ? 1 : 0);
      made.bounds.emplace_back(first, last);
      ranges += fmt::format("{}{}..{}", ranges.empty() ? "" : ", ",
                            text(constant(type, first, Bare::Always)),
                            text(constant(type, last, Bare::Always)));
    }
    made.definition = fmt::format("ARRAY[{}] OF {}", ranges, element.name);
    if (made.name.empty() || random_.chance(40)) made.name = std::exchange(made.definition, "");
  }

  // The type of its instances.
  void addBlock(const Unit& block) {
    Type made{block.name, Type::Block};
    made.block = &block;
    for (const Variable& each : block.variables) {
      if (each.role == Variable::Output) made.parts.push_back({each.name, {each.type}});
    }
    units_.types.push_back(std::move(made));
  }

  void addUnit(Unit::Kind kind, const std::string& name) {
    const bool main = kind == Unit::Program;
    const bool function = kind == Unit::Function;
    std::vector<const Type*> blocks;
    for (const Type& each : units_.types) {
      if (each.kind == Type::Block) blocks.push_back(&each);
    }
    units_.list.push_back({kind, name + suffix_});
    const auto add = [&](const char* prefix, int count, bool pointers, Variable::Role role) {
      for (; count > 0; --count) {
        addVariable(fmt::format("{}{}", prefix, count), any(pointers ? isHeld : isValue), role);
      }
    };
    if (function) addVariable(unit().name, any(isValue), Variable::Result);
    if (!main) add("in", 1 + random_.below(3), true, Variable::Input);
    if (!main) add("io", random_.below(2), false, Variable::InOut);
    if (kind == Unit::FunctionBlock) add("out", 1 + random_.below(2), false, Variable::Output);
    add("v", main ? 18 : 5, true, Variable::Local);
    for (std::size_t i = 0; !function && i < blocks.size(); ++i) {
      const Type* type = blocks[i];
      if (!main && random_.chance(60)) continue;
      if (random_.chance(20)) {
        Type made;
        array(made, *type);
        type = &units_.types.emplace_back(std::move(made));
      }
      addVariable(fmt::format("b{}", i), *type, Variable::Local);
    }
    for (const Variable& each : unit().variables) {
      if (each.role != Variable::Local || each.type->kind != Type::Pointer) continue;
      unit().body.push_back({Statement::Assign, variable(each), {address(*each.type)}});
    }
    Statements body = statements(main ? 10 : 3, function ? 1 : 2);
    std::move(body.begin(), body.end(), std::back_inserter(unit().body));
    if (kind == Unit::FunctionBlock) addBlock(unit());
    if (!function) return;
    Expr result = assigned(resultOf(unit()), kDepth);
    if (result.type == nullptr) return;
    unit().body.push_back({Statement::Assign, variable(unit().variables[0]), {std::move(result)}});
  }

  Random random_;
  std::string suffix_;
  Units units_;
  std::vector<Expr> controls_;
  int loops_ = 0;
  int nesting_ = 0;
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
      for (Unit& unit : units.list) {
        if (erase(unit.body, stuck.statement)) break;
      }
    }
  }
}

}  // namespace generated
