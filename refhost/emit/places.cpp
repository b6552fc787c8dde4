// What an assignment can name, in C.
#include <fmt/format.h>

#include "hostkit/literal_text.h"
#include "refhost/emit/c_generator.h"
#include "refhost/semantics/constants.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

// What an assignment can name: a variable, a member, a bit or an address.
void CGenerator::place(const Expr& expr, std::string& out) {
  const bool isTyped = expr.symbol != nullptr && expr.symbol->symbolType() == vel::Symbol::Typed;
  if (const auto* const named = isTyped ? dynamic_cast<const NamedValue*>(expr.symbol) : nullptr) {
    if (valueType(expr.dataType) == BasicDataType::Pointer) {
      out += "NULL";
    } else {
      appendInteger(named->value, out);
    }
    return;
  }
  if (expr.op() == Expression::Variable) {
    if (const auto* const variable = asVariable(expr.symbol)) {
      // A default that names a constant of the function that is called.
      if (variable->constant && variable->initial != nullptr && variable->owner != unit_ &&
          variable->owner->type() == vel::POUType::Function) {
        operand(*variable->initial, out);
        return;
      }
      out += reference(*variable);
      return;
    }
    vel::HeapAddress address;
    services_.memory.parse(TreeBuilder::source(expr), address);
    out += addressText(address, services_.memory.raw(address), cType(typeOf(expr)));
    return;
  }
  if (expr.access == Expr::Access::Bit) {
    out += "vgbit((";
    place(static_cast<const Expr&>(*expr.leaf(0)), out);
    out += fmt::format(", {}))", expr.bitAccessOffset());
    return;
  }
  if (expr.access == Expr::Access::Element) {
    elementPlace(expr, out);
    return;
  }
  const auto& base = static_cast<const Expr&>(*expr.leaf(0));
  if (expr.access == Expr::Access::Dereference) {
    // A text is its first character's address.
    const bool text = isText(typeOf(expr));
    if (!text) out += "(*";
    place(base, out);
    if (!text) out += ')';
    return;
  }
  if (const auto* const member = asVariable(expr.symbol)) {
    appendOwner(base, out);
    out += member->cName;
  }
}

// What has members, up to their names.
void CGenerator::appendOwner(const Expr& owner, std::string& out) {
  const bool pointed = owner.access == Expr::Access::Dereference;
  place(pointed ? static_cast<const Expr&>(*owner.leaf(0)) : owner, out);
  out += pointed ? "->" : ".";
}

void CGenerator::elementPlace(const Expr& expr, std::string& out) {
  const auto& base = static_cast<const Expr&>(*expr.leaf(0));
  const auto* const array = dynamic_cast<const ArrayType*>(base.dataType);
  if (array == nullptr) {  // a pointer to the first
    const bool text = isText(typeOf(expr));
    if (text) out += fmt::format("(({})", textPointer(*expr.dataType));
    place(base, out);
    if (text) out += ')';
    out += '[' + expressionText(expr.leaf(1)) + ']';
    return;
  }
  appendOwner(base, out);
  out += "a[" + indexText(expr, *array) + ']';
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

std::string CGenerator::addressText(const vel::HeapAddress& address, vel::HeapRawAddr raw,
                                    const char* cType) {
  if (address.isBitMode()) return fmt::format("gbit({})", raw.address);
  return fmt::format("VEL_MEM({}, {})", cType, raw.address);
}

std::string CGenerator::reference(const VarSymbol& variable) {
  const vel::HeapAddress address = variable.iecAddress();
  if (address.area != 0) {
    return addressText(address, variable.backendAddress(), cType(valueType(variable.dataType())));
  }
  const bool text = variable.dataType() != nullptr && isText(variable.dataType()->dataType());
  const bool indirect =
      !text && (variable.role == Role::InOut || (variable.role == Role::Output &&
                                                 variable.owner->type() == vel::POUType::Function));
  const bool member =
      variable.owner->type() != vel::POUType::Function && variable.role != Role::Temp;
  if (variable.owner == services_.symbols.globals()) {
    return variable.owner->cData + "." + variable.cName;
  }
  std::string name;
  if (member) {
    usesSelf_ = true;
    name = "self->";
  } else {
    used_.insert(&variable);
  }
  name += variable.cName;
  return indirect ? "(*" + name + ")" : std::move(name);
}

std::string CGenerator::variableText(vel::SymbolVar* variable, int, const std::string&) {
  if (variable == nullptr) return {};
  const auto& symbol = *static_cast<const VarSymbol*>(variable);
  // These texts are reached through the pointers that they are.
  const bool pointer =
      symbol.role == Role::InOut || symbol.role == Role::Result ||
      (symbol.role == Role::Output && symbol.owner->type() == vel::POUType::Function);
  const bool pointed = pointer && isText(valueType(symbol.dataType()));
  return pointed ? "*" + reference(symbol) : reference(symbol);
}

}  // namespace refhost
