#include "refhost/semantics/names.h"

#include <utility>

#include "hostkit/folding.h"
#include "refhost/semantics/arithmetic.h"

namespace refhost {

using vel::TreeBuilder;

VarSymbol* Names::variableNamed(std::string_view name) const {
  VarSymbol* const own = context_.unit != nullptr ? context_.unit->variable(name) : nullptr;
  if (own != nullptr) return own;
  const auto ahead = constantsAhead_.find(name);
  return ahead != constantsAhead_.end() && ahead->second != nullptr
             ? ahead->second.get()
             : services_.symbols.global(name);
}

// Variables hide the values of enumerations. A value may be qualified with its type: `Color#Red`,
// `Color.Red`.
NamedValue* Names::valueNamed(const Expr& expr) const {
  const std::string_view text = TreeBuilder::source(expr);
  const std::size_t mark = text.find_first_of("#.");
  if (mark != std::string_view::npos) {
    const auto* const type =
        dynamic_cast<const EnumType*>(services_.symbols.dataType(text.substr(0, mark)));
    return type != nullptr ? type->value(text.substr(mark + 1)) : nullptr;
  }
  if (context_.unit != nullptr) {
    const auto local = context_.unit->namedValues.find(text);
    if (local != context_.unit->namedValues.end()) return local->second;
  }
  if (NamedValue* const value = services_.symbols.namedValue(text)) return value;
  return equalIgnoringCase(text, "NULL") ? services_.symbols.null() : nullptr;
}

bool Names::isAmbiguous(const vel::ASTNode& node) const {
  const bool possible = services_.symbols.hasAmbiguous() ||
                        (context_.unit != nullptr && !context_.unit->namedValues.empty());
  if (!possible || node.type() != vel::ASTType::Expression) return false;
  if (static_cast<const Expr&>(node).kind != ExprKind::Variable) return false;
  const std::string_view name = TreeBuilder::source(node);
  if (variableNamed(name) != nullptr) return false;
  if (context_.unit != nullptr) {
    const auto local = context_.unit->namedValues.find(name);
    if (local != context_.unit->namedValues.end()) return local->second == nullptr;
  }
  return services_.symbols.isAmbiguous(name);
}

bool Names::isOpen(const vel::ASTNode& node) const {
  const Literal* const literal = literalOf(node);
  return literal != nullptr ? isBoolNumber(literal->value) : isAmbiguous(node);
}

bool Names::isAddress(std::string_view text) const {
  vel::HeapAddress address;
  const bool iec = !text.empty() && text[0] == '%';
  return (iec || services_.usesDeviceLetters()) && services_.memory.parse(text, address);
}

void Names::addAhead(std::unique_ptr<VarSymbol> constant) {
  const std::string_view name = constant->name();
  constantsAhead_.emplace(name, std::move(constant));
}

std::unique_ptr<VarSymbol> Names::takeAhead(std::string_view name) {
  const auto found = constantsAhead_.find(name);
  return found != constantsAhead_.end() ? std::move(found->second) : nullptr;
}

Names::ConstantsAhead Names::replaceAhead(ConstantsAhead constants) {
  return std::exchange(constantsAhead_, std::move(constants));
}

}  // namespace refhost
