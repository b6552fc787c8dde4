#include <fmt/format.h>

#include <algorithm>

#include "fuzz/programs/generator.h"

namespace generated {
namespace {

Expr literalOf(const Value& value, bool bare = false) {
  return {Expr::Literal, value.type, printed(value), {}, value, bare};
}

Expr folded(const char* name, Expr a, Expr b) {
  const Type& type = *a.type;
  Values values = {a.value, b.value};
  Expr expr = operation(name, type, {std::move(a), std::move(b)});
  expr.value = expr.op->evaluate(type, values);
  return expr;
}

Expr variable(const Variable& variable) {
  const auto kind = variable.role >= Variable::Constant ? Expr::Global : Expr::Variable;
  return {kind, variable.type, variable.name, {}, variable.initial.value};
}

bool varies(const Expr& expr) {
  if (expr.kind == Expr::Variable) return true;
  return expr.text != "SIZEOF" && std::any_of(expr.operands.begin(), expr.operands.end(), varies);
}

// Between 0 and 100, which every integer, time and date holds.
Expr small(const Expr& operand) {
  const Type& type = *operand.type;
  Expr below = operation("MIN", type, {operand, literalOf(real(type, 100))});
  return operation("MAX", type, {std::move(below), literalOf(real(type, 0))});
}

}  // namespace

const Type& plain(const Type& of) { return of.text() ? type(of.kind, of.bits) : of; }

Expr operation(const Operator& op, const Type& type, std::vector<Expr> operands) {
  const std::string name = nameOf(op, plain(*operands[0].type), type);
  return {Expr::Operation, &type, name, std::move(operands), {}, false, &op};
}

Expr operation(const char* name, const Type& type, std::vector<Expr> operands) {
  const auto named = [=](const Operator& row) { return row.name == name; };
  return operation(*std::find_if(operators().begin(), operators().end(), named), type,
                   std::move(operands));
}

Wide Generator::wholeNumber(const Type& type) {
  const Wide lowest = type.kind == Type::Unsigned ? 0 : -(Wide{1} << (type.bits - 1));
  const int choice = random_.below(5);
  if (choice == 0) return lowest + random_.below(2);
  if (choice == 1) return lowest + (Wide{1} << type.bits) - 1 - random_.below(2);
  if (choice == 2) return integer(type, static_cast<Wide>(random_.bits())).number;
  return std::max<Wide>(lowest, random_.below(30) - 10);
}

Expr Generator::literal(const Type& type, Bare bare) {
  const bool always = bare == Bare::Always;
  if (type.integer()) return integerLiteral(type, wholeNumber(type), bare);
  if (type.text()) return textLiteral(type);
  if (type.whole()) {
    Expr whole{Expr::Whole, &type};
    const std::vector<Part> parts = partsOf(type);
    const int count = 1 + random_.below(static_cast<int>(parts.size()));
    for (auto part = parts.begin(); part != parts.begin() + count; ++part) {
      whole.operands.push_back(literal(*part->initial.type, bare));
    }
    return whole;
  }
  switch (type.kind) {
    case Type::Bool: {
      const Value value = boolean(random_.chance(50));
      return literalOf(value, always || (bare == Bare::AsItself && random_.chance(50)));
    }
    case Type::Real: {
      // A REAL and an LREAL both hold them, since a literal reaches C with all its digits.
      static const std::vector<double> kSpecial = {0, 1e10, -1, 16777216, 0.5, 2.5};
      const double other = (random_.below(4001) - 2000) / 64.0;
      // Alone it has the type that is wanted of what it is a part of.
      return literalOf({&type, 0, random_.chance(20) ? random_.pick(kSpecial) : other}, always);
    }
    case Type::Enumeration: {
      const auto& [name, number] = random_.pick(type.names);
      return {Expr::Literal, &type, name, {}, {&type, number}, always};
    }
    case Type::Pointer:
      return {Expr::Literal, &type, "NULL", {}, {&type}, true};
    default: {
      constexpr Wide kDay = 86400;
      const Wide n = type.kind == Type::Duration ? wholeNumber(type) : random_.below(2000000000);
      const Wide held = type.kind == Type::Date        ? n / kDay * kDay
                        : type.kind == Type::TimeOfDay ? n % (kDay * 1000)
                                                       : n;
      return literalOf({&type, held}, true);
    }
  }
}

Expr Generator::integerLiteral(const Type& type, Wide number, Bare bare) {
  Expr expr = literalOf({&type, number});
  const bool based = number >= 0 && random_.chance(30);
  if (based) {
    const char* const forms[] = {"2#{:b}", "8#{:o}", "16#{:X}"};
    expr.text = fmt::format(fmt::runtime(forms[random_.below(3)]), number);
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

Expr Generator::textLiteral(const Type& type) {
  Expr expr = literalOf({&type}, true);
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

// Of constants before it when there are any.
Expr Generator::constant(const Type& type, Wide number, Bare bare) {
  if (random_.chance(50)) return integerLiteral(type, number, bare);
  Expr expr = term(type);
  for (int i = random_.below(3); i > 0; --i) {
    const char* const op = random_.pick(std::vector{"+", "-", "*", "XOR", "OR"});
    expr = folded(op, std::move(expr), term(type));
  }
  const Wide rest = integer(type, number - expr.value.number).number;
  return folded("+", std::move(expr), integerLiteral(type, rest, Bare::Never));
}

Expr Generator::term(const Type& type) {
  std::vector<Expr> found;
  for (const Variable& each : units_.list.front().variables) {
    if (each.role == Variable::Constant && each.type == &type) found.push_back(variable(each));
  }
  return found.empty() ? integerLiteral(type, wholeNumber(type), Bare::Never) : random_.pick(found);
}

bool Generator::allows(const Variable& each, Access access) const {
  if (access == Access::Read) return each.role != Variable::Result;
  return each.role != Variable::Input && each.role != Variable::Constant &&
         std::find(controls_.begin(), controls_.end(), each.name) == controls_.end() &&
         (access == Access::Write || each.role != Variable::Result);
}

// The place, and elements, members and what it points to; of subscripts there are none yet.
void Generator::collect(std::vector<Expr>& found, const Expr& place, Access access,
                        const Predicate& wanted) {
  const Type& type = *place.type;
  if (wanted(type)) found.push_back(place);
  const auto add = [&](Expr::Kind kind, const Type& part, const std::string& name) {
    collect(found, {kind, &part, name, {place}}, access, wanted);
  };
  if (type.element != nullptr) add(Expr::Element, *type.element, "");
  if (type.kind == Type::Pointer) add(Expr::Pointed, *type.element, "");
  for (const Part& part : type.parts) {
    if (type.kind == Type::Structure || access == Access::Read) {
      add(Expr::Member, *part.initial.type, part.name);
    }
  }
  if (type.kind != Type::Block || access != Access::Write) return;
  for (const Variable& each : type.block->variables) {
    if (each.role == Variable::Input) add(Expr::Member, *each.type, each.name);
  }
}

Expr Generator::place(Access access, const Predicate& wanted) {
  std::vector<Expr> found;
  for (const Unit& each : units_.list) {
    if (each.kind != Unit::Globals && &each != &unit()) continue;
    for (const Variable& one : each.variables) {
      if (allows(one, access)) collect(found, variable(one), access, wanted);
    }
  }
  return found.empty() ? Expr() : complete(random_.pick(found));
}

// With subscripts.
Expr Generator::complete(Expr place) {
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
Expr Generator::subscript(std::pair<long, long> bound) {
  ++nesting_;
  Expr result;
  if (nesting_ < 3 && random_.chance(60)) result = expression(any(&Type::integer), 1);
  --nesting_;
  if (varies(result)) return result;
  const int count = static_cast<int>(bound.second - bound.first) + 1;
  return constant(type(Type::Signed, 16), bound.first + random_.below(count), Bare::Always);
}

// There may be no array or structure of the type.
Expr Generator::leaf(const Type& type, Bare bare) {
  if (type.whole() || random_.chance(80)) {
    Expr found = place(Access::Read, [&](const Type& each) { return each.alike(type); });
    if (found.type != nullptr || type.whole()) return found;
  }
  return type.kind == Type::Pointer && random_.chance(95) ? address(type) : literal(type, bare);
}

Expr Generator::address(const Type& type) {
  Expr found = place(Access::Refer, [&](const Type& each) { return &each == type.element; });
  if (found.type == nullptr) return literal(type, Bare::Always);
  return {Expr::Address, &type, "", {std::move(found)}};
}

Expr Generator::expression(const Type& wanted, int depth, Bare bare) {
  const Type& type = plain(wanted);
  for (int tries = depth <= 0 || random_.chance(15) ? 40 : 0; tries < 40; ++tries) {
    Expr expr{Expr::Call, &type};
    if (random_.chance(8) && call(expr, depth - 1)) return expr;
    if (type.kind >= Type::Enumeration) break;
    if (type.kind == Type::Bool && random_.chance(3) && compare(expr)) return expr;
    if (operate(random_.pick(operators()), type, depth, expr)) return expr;
  }
  return leaf(type, bare);
}

bool Generator::call(Expr& expr, int depth) {
  std::vector<const Unit*> found;
  for (const Unit& each : units_.list) {
    const bool earlier = each.kind == Unit::Function && &each != &unit();
    if (earlier && resultOf(each).alike(*expr.type)) found.push_back(&each);
  }
  if (found.empty()) return false;
  expr.unit = random_.pick(found);
  expr.text = expr.unit->name;
  return arguments(expr.operands, *expr.unit, depth);
}

// Two values of an enumeration, or two pointers.
bool Generator::compare(Expr& expr) {
  Expr first = place(Access::Read, [](const Type& each) {
    return each.kind == Type::Enumeration || each.kind == Type::Pointer;
  });
  if (first.type == nullptr) return false;
  Expr second = expression(*first.type, 1, Bare::Always);
  expr =
      operation(random_.chance(50) ? "=" : "<>", *expr.type, {std::move(first), std::move(second)});
  return true;
}

bool Generator::operate(const Operator& op, const Type& type, int depth, Expr& expr) {
  const Types wanted = op.operands(random_, type);
  if (wanted.empty()) return false;
  // Among values of other types a literal has one of theirs.
  const bool mixed = std::any_of(wanted.begin(), wanted.end(), [&](const Type* each) {
    return each->number() && !each->alike(*wanted.back());
  });
  const Bare bare =
      mixed || op.precedence > 0 || op.need == Operator::Name ? Bare::Never : Bare::AsItself;
  std::vector<Expr> operands;
  for (const Type* each : wanted) {
    operands.push_back(op.name == "SIZEOF" ? leaf(*each, bare)
                                           : expression(*each, depth - 1, bare));
    if (op.need == Operator::Position && each->integer() && random_.chance(70)) {
      operands.back() = integerLiteral(*each, random_.below(8), bare);
    }
  }
  if (op.need == Operator::Computed && operands[0].kind == Expr::Literal) return false;
  // A literal is judged by the type to which MIN and MAX bring it.
  const bool extreme = (op.name == "MIN" || op.name == "MAX") && !wanted[0]->alike(*wanted[1]);
  const auto isLiteral = [](const Expr& each) { return each.kind == Expr::Literal; };
  if (extreme && std::any_of(operands.begin(), operands.end(), isLiteral)) return false;
  if (op.need == Operator::Small && wanted[0]->kind == Type::Real) operands[0] = small(operands[0]);
  // A literal without its type is signed in C.
  if (op.need == Operator::Shift && operands[0].kind == Expr::Literal) operands[0].bare = false;
  if (op.need == Operator::Shift) operands[1] = count(*wanted[0], depth);
  const bool alike = wanted.size() == 2 && wanted[0]->alike(*wanted[1]) && wanted[0]->number();
  if (op.precedence > 0 && alike && random_.chance(30)) {
    const std::size_t at = random_.chance(70) ? 1 : 0;
    if (operands[1 - at].kind != Expr::Literal) operands[at] = literal(*wanted[at], Bare::Always);
  }
  // An operator that gives one of several literals has the type that is wanted, like a literal.
  const bool selects = op.name == "SEL" || op.name == "MUX";
  const bool literals =
      std::all_of(operands.begin() + (selects ? 1 : 0), operands.end(), isLiteral);
  for (Expr& each : operands) each.bare = each.bare && !(literals && each.type->number());
  expr = operation(op, type, std::move(operands));
  const std::string& name = expr.text;
  const std::size_t to = name.find("_TO_");
  return to == std::string::npos || name.substr(0, to) != name.substr(to + 4);
}

Expr Generator::count(const Type& shifted, int depth) {
  const Type& type = *random_.pick(Types{&shifted, &generated::type(Type::Unsigned, 8)});
  if (random_.chance(60)) {
    return integerLiteral(type, random_.below(shifted.bits - 1) + 1, Bare::AsItself);
  }
  Expr width = integerLiteral(type, shifted.bits == 8 ? 7 : shifted.bits, Bare::Never);
  return operation("MOD", type, {expression(type, depth - 1), std::move(width)});
}

// For a variable or a parameter of the type, which may be of another.
Expr Generator::assigned(const Type& type, int depth) {
  const Type& other = random_.pick(types());
  if (random_.chance(25) && assignable(type, other)) {
    Expr expr = expression(other, depth);
    const bool strict = expr.text == "MOVE" || expr.text == "MIN" || expr.text == "MAX" ||
                        expr.text == "ROL" || expr.text == "ROR";
    if (strict ? holds(type, other) : expr.kind != Expr::Literal) return expr;
  }
  return expression(type, depth, Bare::Always);
}

bool Generator::arguments(std::vector<Expr>& to, const Unit& callee, int depth) {
  for (const Variable& each : parametersOf(callee)) {
    const bool left = callee.kind != Unit::Function && random_.chance(10);
    const bool input = each.role == Variable::Input;
    to.push_back(!input ? place(Access::Refer, [&](const Type& it) { return &it == each.type; })
                 : left ? Expr()
                        : assigned(*each.type, depth));
    if (to.back().type == nullptr && !(input && left)) return false;
  }
  return true;
}

}  // namespace generated
