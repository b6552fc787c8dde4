#include "fuzz/programs/generator.h"

#include <fmt/format.h>

#include <algorithm>

namespace generated {
namespace {

bool isValue(const Type& type) {
  return type.kind == Type::Array ? isValue(*type.element)
                                  : type.kind < Type::Pointer || type.kind == Type::Structure;
}

void erase(Statements& from, const Statement* wanted) {
  for (Statement& each : from) {
    for (Statements& body : each.bodies) erase(body, wanted);
  }
  const auto at = std::find_if(from.begin(), from.end(),
                               [=](const Statement& each) { return &each == wanted; });
  if (at != from.end()) from.erase(at);
}

}  // namespace

bool isHeld(const Type& type) { return type.kind == Type::Pointer || isValue(type); }

const Type& resultOf(const Unit& function) { return *function.variables.front().type; }

Units Generator::units() {
  addGlobals();
  for (int i = random_.below(4); i > 0; --i) addUnit(Unit::Function, fmt::format("F{}", i));
  for (int i = random_.below(4); i > 0; --i) addUnit(Unit::FunctionBlock, fmt::format("B{}", i));
  addUnit(Unit::Program, "P");
  return std::move(units_);
}

const Type& Generator::any(const Predicate& wanted) {
  for (;;) {
    const bool derived = !units_.types.empty() && random_.chance(35);
    const Type& type = derived ? random_.pick(units_.types) : random_.pick(types());
    if (wanted(type)) return type;
  }
}

void Generator::addVariable(const std::string& name, const Type& type, Variable::Role role) {
  Variable result{name + (unit().kind == Unit::Globals ? suffix_ : ""), &type, role};
  const bool constant = role == Variable::Constant;
  const bool starts = isValue(type) && role != Variable::InOut && role != Variable::Result;
  if (constant || (starts && random_.chance(80))) {
    result.initial = constant && type.integer()
                         ? this->constant(type, wholeNumber(type), Bare::Always)
                         : literal(type, Bare::Always);
  }
  unit().variables.push_back(std::move(result));
}

// Constants and types first, which need each other, then variables.
void Generator::addGlobals() {
  units_.list.push_back({Unit::Globals, ""});
  for (int i = random_.below(6); i >= 0; --i) {
    const Type& chosen = i == 0 ? type(Type::Signed, 16) : random_.pick(types());
    addVariable(fmt::format("gc{}", i), chosen, Variable::Constant);
  }
  for (int i = 2 + random_.below(7); i > 0; --i) addType(i);
  for (int i = random_.below(4); i > 0; --i) {
    addVariable(fmt::format("g{}", i), any(isValue), Variable::Global);
  }
}

void Generator::addType(int index) {
  Type made{fmt::format("T{}{}", index, suffix_), Type::Text};
  switch (random_.below(7)) {
    case 0: {
      made.kind = Type::Enumeration;
      const Type& base = random_.pick(types());
      long number = -1;
      static const std::vector<const char*> kColors = {"Red", "Green", "Blue", "Black", "White"};
      for (auto i = static_cast<std::size_t>(random_.below(3)); i < kColors.size(); ++i) {
        number = random_.chance(60) ? number + 1 : random_.below(100);
        made.definition +=
            fmt::format("{}{} := {}", made.names.empty() ? "(" : ", ", kColors[i], number);
        made.names.emplace_back(kColors[i], number);
      }
      made.definition += base.integer() ? ") " + base.name : ")";
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
        made.parts.push_back({fmt::format("m{}", i), has ? initial.value : initialOf(type)});
        made.definition +=
            fmt::format("m{} : {}{}; ", i, type.name, has ? " := " + text(initial) : "");
      }
      made.definition += "END_STRUCT";
      break;
    case 3:
      made = random_.chance(70) ? type(Type::Text, 8) : type(Type::WideText, 16);
      made.length = 1 + random_.below(30);
      made.name += fmt::format("[{}]", made.length);
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

void Generator::array(Type& made, const Type& element) {
  made.kind = Type::Array;
  made.element = &element;
  std::string ranges;
  const auto bound = [&](long number) {
    return text(constant(type(Type::Signed, 16), number, Bare::Always));
  };
  for (int i = random_.chance(75) ? 1 : 2; i > 0; --i) {
    const long first = random_.below(6) - 3;
    const long last = first + random_.below(4) + (i == 1 ? 1 : 0);
    made.bounds.emplace_back(first, last);
    ranges += (ranges.empty() ? "" : ", ") + bound(first) + ".." + bound(last);
  }
  made.definition = fmt::format("ARRAY[{}] OF {}", ranges, element.name);
  if (made.name.empty() || random_.chance(40)) made.name = std::exchange(made.definition, "");
}

void Generator::addUnit(Unit::Kind kind, const std::string& name) {
  const bool main = kind == Unit::Program;
  const bool function = kind == Unit::Function;
  std::vector<const Type*> blocks;
  for (const Type& each : units_.types) {
    if (each.kind == Type::Block) blocks.push_back(&each);
  }
  units_.list.push_back({kind, name + suffix_});
  const auto add = [&](const char* prefix, int count, const Predicate& wanted,
                       Variable::Role role) {
    for (; count > 0; --count) addVariable(fmt::format("{}{}", prefix, count), any(wanted), role);
  };
  if (function) addVariable(unit().name, any(isValue), Variable::Result);
  if (!main) add("in", 1 + random_.below(3), isHeld, Variable::Input);
  if (!main) add("io", random_.below(2), isValue, Variable::InOut);
  if (kind == Unit::FunctionBlock) add("out", 1 + random_.below(2), isValue, Variable::Output);
  add("v", main ? 18 : 5, isHeld, Variable::Local);
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
    unit().body.push_back(
        {Statement::Assign, {Expr::Variable, each.type, each.name}, {address(*each.type)}});
  }
  for (int i = main ? 10 : 3; i > 0; --i) addStatement(unit().body, function ? 1 : 2);
  if (kind == Unit::FunctionBlock) {
    Type made{unit().name, Type::Block};
    made.block = &unit();
    for (const Variable& each : unit().variables) {
      if (each.role == Variable::Output) made.parts.push_back({each.name, {each.type}});
    }
    units_.types.push_back(std::move(made));
  }
  if (!function) return;
  const Type& result = resultOf(unit());
  Expr value = assigned(result, kDepth);
  if (value.type == nullptr) return;
  unit().body.push_back(
      {Statement::Assign, {Expr::Variable, &result, unit().name}, {std::move(value)}});
}

Units generate(std::uint64_t seed, const std::string& suffix) {
  Units units = Generator(seed, suffix).units();
  // What the operands' needs do not keep from being undefined is left out.
  for (;;) {
    try {
      evaluated(units);
      return units;
    } catch (const Undefined& stuck) {
      for (Unit& unit : units.list) erase(unit.body, stuck.statement);
    }
  }
}

}  // namespace generated
