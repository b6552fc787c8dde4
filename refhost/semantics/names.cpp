#include "refhost/semantics/names.h"

#include <utility>

#include "hostkit/folding.h"
#include "hostkit/operator_traits.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/derived_types.h"

namespace refhost {

using vel::TreeBuilder;

VarSymbol* Names::variableNamed(std::string_view name) {
  VarSymbol* const own = context_.unit != nullptr ? context_.unit->visible(name) : nullptr;
  if (own != nullptr) return own;
  const auto ahead = constantsAhead_.find(name);
  return ahead != constantsAhead_.end() && ahead->second != nullptr ? ahead->second.get()
         : waiting_.empty()                                         ? services_.symbols.global(name)
                                                                    : waitingNamed(name);
}

// Resolving the type may look names up as well, so the constant waits no longer then.
VarSymbol* Names::waitingNamed(std::string_view name) {
  const auto found = waiting_.find(name);
  if (found == waiting_.end()) return services_.symbols.global(name);
  const Waiting waiting = std::move(found->second);
  waiting_.erase(found);
  const ResolvedType resolved = parts_.types.resolve(const_cast<TypeSpec&>(*waiting.type));
  if (resolved.type == nullptr || isComposite(resolved.type)) {
    return services_.symbols.global(name);
  }
  const VarSymbol& known = *waiting.constant;
  auto constant = std::make_unique<VarSymbol>(known.name(), resolved.type, known.role, known.owner);
  constant->constant = true;
  constant->refused = known.refused;
  constant->initial = known.initial;
  VarSymbol* const added = constant.get();
  addAhead(std::move(constant));
  return added;
}

void Names::addWaiting(std::unique_ptr<VarSymbol> constant, const TypeSpec& type) {
  const std::string_view name = constant->name();
  waiting_.emplace(name, Waiting{std::move(constant), &type});
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
  for (const UnitSymbol* unit = context_.unit; unit != nullptr; unit = unit->outer) {
    const auto local = unit->namedValues.find(text);
    if (local != unit->namedValues.end()) return local->second;
  }
  if (NamedValue* const value = services_.symbols.namedValue(text)) return value;
  return equalIgnoringCase(text, "NULL") ? services_.symbols.null() : nullptr;
}

bool Names::hasAmbiguous() const {
  bool own = false;
  for (const UnitSymbol* unit = context_.unit; unit != nullptr; unit = unit->outer) {
    own = own || !unit->namedValues.empty();
  }
  return own || services_.symbols.hasAmbiguous();
}

bool Names::isAmbiguous(const vel::ASTNode& node) {
  if (!hasAmbiguous() || node.type() != vel::ASTType::Expression) return false;
  if (static_cast<const Expr&>(node).kind != ExprKind::Variable) return false;
  const std::string_view name = TreeBuilder::source(node);
  if (variableNamed(name) != nullptr) return false;
  for (const UnitSymbol* unit = context_.unit; unit != nullptr; unit = unit->outer) {
    const auto local = unit->namedValues.find(name);
    if (local != unit->namedValues.end()) return local->second == nullptr;
  }
  return services_.symbols.isAmbiguous(name);
}

bool Names::isOpen(const vel::ASTNode& node) {
  const Literal* const literal = literalOf(node);
  if (literal != nullptr) return isBoolNumber(literal->value);
  return isAmbiguous(node) || choosesOpen(node);
}

// True of a call of an operator that gives one of several open operands.
bool Names::choosesOpen(const vel::ASTNode& node) {
  if (node.type() != vel::ASTType::Expression) return false;
  const auto& expr = static_cast<const Expr&>(node);
  if (expr.kind != ExprKind::Call || expr.analysed) return false;
  const auto& call = static_cast<const Call&>(*expr.leaf(0));
  const OperatorTraits& traits = hostkit::operatorTraits(TreeBuilder::source(*call.leaf(0)));
  const bool passes = traits.chooses() || traits.result == OperatorTraits::Result::Passed;
  const vel::ASTNode* const list = passes ? call.parameters() : nullptr;
  bool all = list != nullptr;
  for (int i = traits.firstChoice; all && i < list->leavesCount(); ++i) {
    const bool named = kindOf(*list->leaf(i)) == NodeKind::Argument;
    const vel::ASTNode& choice = named ? *list->leaf(i)->leaf(1) : *list->leaf(i);
    const Literal* const literal = literalOf(choice);
    all =
        literal != nullptr ? !literal->value.fixedType : isAmbiguous(choice) || choosesOpen(choice);
  }
  return all;
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
  if (!waiting_.empty()) waiting_.erase(std::string(name));
  const auto found = constantsAhead_.find(name);
  return found != constantsAhead_.end() ? std::move(found->second) : nullptr;
}

Names::ConstantsAhead Names::replaceAhead(ConstantsAhead constants) {
  return std::exchange(constantsAhead_, std::move(constants));
}

}  // namespace refhost
