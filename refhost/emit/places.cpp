// What an assignment can name, in C.
#include <fmt/format.h>

#include "hostkit/literal_text.h"
#include "refhost/emit/c_generator.h"
#include "refhost/semantics/constants.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

// A variable, a member, an element, a bit, an address, or the value of a name.
Place CGenerator::placeOf(const Expr& expr) {
  using Kind = Place::Kind;
  const bool isTyped = expr.symbol != nullptr && expr.symbol->symbolType() == vel::Symbol::Typed;
  if (const auto* const named = isTyped ? dynamic_cast<const NamedValue*>(expr.symbol) : nullptr) {
    Place value{Kind::Object, "NULL"};
    if (valueType(expr.dataType) != BasicDataType::Pointer) {
      value.text.clear();
      appendInteger(named->value, value.text);
    }
    return value;
  }
  const auto base = [&expr] { return static_cast<const Expr*>(expr.leaf(0)); };
  switch (expr.access) {
    case Expr::Access::None:
      return namedPlace(expr);
    case Expr::Access::Bit:
      return {Kind::Bit, placeOf(*base()).load(),
              static_cast<std::uint32_t>(expr.bitAccessOffset())};
    case Expr::Access::Element:
      return elementPlace(expr);
    case Expr::Access::Dereference: {
      // A text is its first character's address.
      const bool text = isText(typeOf(expr));
      return {text ? Kind::Object : Kind::Pointed, placeOf(*base()).load()};
    }
    case Expr::Access::Member:
    case Expr::Access::Part:
      break;
  }
  const auto* const member = asVariable(expr.symbol);
  return member != nullptr ? placeOf(*base()).member(member->cName) : Place();
}

Place CGenerator::namedPlace(const Expr& expr) {
  const auto* const variable = asVariable(expr.symbol);
  if (variable == nullptr) {
    vel::HeapAddress address;
    services_.memory.parse(TreeBuilder::source(expr), address);
    return Place::ofAddress(address, services_.memory.raw(address), cType(typeOf(expr)));
  }
  // A default that names a constant of the function that is called.
  if (variable->constant && variable->initial != nullptr && variable->owner != unit_ &&
      variable->owner->type() == vel::POUType::Function) {
    Place value;
    operand(*variable->initial, value.text);
    return value;
  }
  return placeOf(*variable);
}

Place CGenerator::elementPlace(const Expr& expr) {
  const auto& base = static_cast<const Expr&>(*expr.leaf(0));
  const auto* const array = dynamic_cast<const ArrayType*>(base.dataType);
  if (array != nullptr) return placeOf(base).member("a[" + indexText(expr, *array) + "]");
  // A pointer to the first.
  std::string text = placeOf(base).load();
  if (isText(typeOf(expr))) text = fmt::format("(({}){})", arrayPointerText(*expr.dataType), text);
  return {Place::Kind::Object, fmt::format("{}[{}]", text, expressionText(expr.leaf(1)))};
}

// The elements of all dimensions lie one after the other, those of the last one together.
std::string CGenerator::indexText(const Expr& expr, const ArrayType& array) {
  std::string text;
  std::int64_t known = 0;
  std::int64_t stride = array.count();
  for (std::size_t i = 0; i < array.bounds.size(); ++i) {
    const Bounds& bounds = array.bounds[i];
    ASTNode* const subscript = expr.leaf(static_cast<int>(i) + 1);
    stride /= bounds.count();
    if (const auto constant = constantInteger(*subscript)) {
      known += (*constant - bounds.low) * stride;
      continue;
    }
    if (!text.empty()) text += " + ";
    std::string low;
    std::string high;
    appendInteger(bounds.low, low);
    appendInteger(bounds.high, high);
    text += fmt::format("vel_index({}, {}, {})", expressionText(subscript), low, high);
    if (stride != 1) text += fmt::format(" * {}", stride);
  }
  if (text.empty()) return std::to_string(known);
  return known == 0 ? text : fmt::format("{} + {}", text, known);
}

Place CGenerator::placeOf(const VarSymbol& variable) {
  using Kind = Place::Kind;
  const vel::HeapAddress address = variable.iecAddress();
  if (address.area != 0) {
    return Place::ofAddress(address, variable.backendAddress(),
                            cType(valueType(variable.dataType())));
  }
  if (variable.owner == services_.symbols.globals()) {
    return {Kind::Object, variable.owner->cData + "." + variable.cName};
  }
  const bool text = variable.dataType() != nullptr && isText(variable.dataType()->dataType());
  const bool indirect =
      !text && (variable.role == Role::InOut || (variable.role == Role::Output &&
                                                 variable.owner->type() == vel::POUType::Function));
  const bool member =
      variable.owner->type() != vel::POUType::Function && variable.role != Role::Temp;
  std::string name;
  if (member) {
    usesSelf_ = true;
    name = "self->";
  } else {
    used_.insert(&variable);
  }
  name += variable.cName;
  return {indirect ? Kind::Pointed : Kind::Object, std::move(name)};
}

std::string CGenerator::variableText(vel::SymbolVar* variable, int, const std::string&) {
  if (variable == nullptr) return {};
  const auto& symbol = *static_cast<const VarSymbol*>(variable);
  // These texts are reached through the pointers that they are.
  const bool pointer =
      symbol.role == Role::InOut || symbol.role == Role::Result ||
      (symbol.role == Role::Output && symbol.owner->type() == vel::POUType::Function);
  const bool pointed = pointer && isText(valueType(symbol.dataType()));
  return (pointed ? "*" : "") + placeOf(symbol).load();
}

}  // namespace refhost
