#include "operators/func/adr.h"

#include "core/checks.h"
#include "core/device_address.h"
#include "core/emission.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/expression.h"
#include "host/symbol.h"
#include "host/symbol_manager.h"

namespace vel {
namespace {

constexpr InvocationShape kOneParameter{1, 1};

// True for access to a member, an element or a bit.
bool isPart(const Expression* operand) {
  return operand != nullptr && operand->op() == Expression::Typed;
}

// False for a bit of a variable, which has no address in C.
bool isAddressable(const Expression* operand) {
  if (isPart(operand)) return operand->bitAccessOffset() < 0;
  return operand != nullptr && operand->op() == Expression::Variable;
}

std::string memoryText(std::uint32_t raw, const HeapAddress& address) {
  return memoryByteText(address.isBitMode() ? raw / 8 : raw);
}

// True when the variable is declared at a device address or the host has placed it there.
bool isInDeviceMemory(const SymbolVar& variable, const POUDeclaration* unit) {
  return variable.isFixedAddress() ||
         (unit != nullptr && isKeptInDeviceMemory(*unit) && variable.backendAddress().address != 0);
}

}  // namespace

bool ADROperator::check(InternalInterface* ii, ASTNode* invocation,
                        std::vector<VELMessage>& messages, std::string& resultType,
                        const std::string& /*pouName*/) {
  ASTNode* list = checkShape(ii, invocation, kOneParameter, messages);
  if (list == nullptr) return false;

  ASTNode* operand = list->leaf(0);
  if (!isAddressable(dynamic_cast<const Expression*>(operand))) {
    const std::string text = AstNodeHelper::astText(operand);
    HeapAddress address;
    if (!parseAddress(ii, text, address)) {
      report(ii, messages, message::kNotAllowed, operand->pos(), text, operatorText(invocation));
      return false;
    }
  }
  resultType = "UDINT";
  return true;
}

std::string ADROperator::generate(Generator* gen, ASTNode* invocation) {
  ASTNode* list = argumentList(invocation, 1);
  if (list == nullptr || list->leavesCount() == 0) return {};

  ASTNode* operand = list->leaf(0);
  const bool part = isPart(dynamic_cast<const Expression*>(operand));
  const std::string text = AstNodeHelper::astText(operand);
  const std::string scope = enclosingPouName(invocation);
  std::string place;
  // A variable hides a device address of the same name, so it is looked up first.
  Symbol* symbol =
      part ? nullptr
           : gen->ii->symbolManager()->symbol(text.c_str(), scope.c_str(), Symbol::Variable);
  HeapAddress address;
  if (auto* variable = dynamic_cast<SymbolVar*>(symbol)) {
    if (isInDeviceMemory(*variable, enclosingPou(invocation))) {
      return memoryText(variable->backendAddress().address, variable->iecAddress());
    }
    place = clanApi(gen)->variableText(variable, 16, scope);
  } else if (parseAddress(gen->ii, text, address)) {
    return memoryText(rawAddress(gen->ii, address), address);
  } else if (part) {
    place = clanApi(gen)->expressionText(operand);
  } else {
    return {};
  }
  std::string out = emptyCallText();
  out += "(&";
  out += place;
  out += ')';
  return out;
}

}  // namespace vel
