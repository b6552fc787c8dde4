#include "refhost/services/services.h"

#include <memory>

#include "core/operator.h"
#include "refhost/messages.h"
#include "refhost/services/derived_types.h"
#include "refhost/syntax/tree.h"

namespace refhost {
namespace {

// The operand of `invocation` with this source text; null for none.
const Expr* parameterNamed(const vel::ASTNode& invocation, std::string_view text) {
  const vel::ASTNode* const list = invocation.leaf(1);
  for (int i = 0; list != nullptr && i < list->leavesCount(); ++i) {
    const vel::ASTNode* const leaf = list->leaf(i);
    if (leaf == nullptr || leaf->type() != vel::ASTType::Expression) continue;
    if (vel::TreeBuilder::source(*leaf) == text) return static_cast<const Expr*>(leaf);
  }
  return nullptr;
}

DataTypeInfo describe(const vel::SymbolDataType* type, bool enumerationsAreNumbers) {
  if (type == nullptr) return {};
  if (enumerationsAreNumbers && isEnumeration(type))
    type = static_cast<const EnumType*>(type)->base;
  return {type->dataType(), type->typeName()};
}

}  // namespace

DataTypeInfo Services::typeOf(vel::ASTNode& expression, const std::string& /*unit*/,
                              std::vector<vel::VELMessage>& /*messages*/) {
  if (expression.type() == vel::ASTType::Expression) {
    return describe(static_cast<const Expr&>(expression).dataType, enumerationsAreNumbers);
  }
  if (kindOf(expression) == NodeKind::Invocation) {
    return describe(static_cast<const Call&>(expression).dataType, enumerationsAreNumbers);
  }
  if (expression.type() != vel::ASTType::ConstantValue) return {};
  auto& literal = static_cast<Literal&>(expression);
  return {literal.basicData().type(), literal.typeStr()};
}

bool Services::addUnit(vel::SymbolPOU* unit) {
  if (symbols.find(unit->name(), {}, vel::Symbol::All) != nullptr) return false;
  return symbols.add(std::unique_ptr<vel::SymbolPOU>(unit));
}

bool Services::isWritable(vel::ASTNode& invocation, const std::string& text,
                          const std::string& /*unit*/, std::vector<vel::VELMessage>& messages) {
  const Expr* const place = parameterNamed(invocation, text);
  if (place == nullptr || refhost::isWritable(*place)) return true;
  report(messages, invocation.pos(), message::kNotWritable, {text});
  return false;
}

// The analysis has resolved all type specifications.
vel::SymbolDataType* Services::resolve(vel::ASTNode& typeSpec, vel::VarContainer& /*unit*/) {
  const auto* const spec = dynamic_cast<const TypeSpec*>(&typeSpec);
  return spec != nullptr ? spec->dataType : nullptr;
}

void Services::addCall(const std::string& caller, const std::string& callee,
                       vel::TextLocation where) {
  if (caller.empty()) {
    calls.edges.push_back({calls.currentUnit, callee, calls.currentLocation});
  } else {
    calls.edges.push_back({caller, callee, where});
  }
}

}  // namespace refhost
