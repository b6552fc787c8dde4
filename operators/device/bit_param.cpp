#include "operators/device/bit_param.h"

#include <string_view>

#include "core/case_folding.h"
#include "core/checks.h"
#include "core/emission.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/symbol.h"
#include "host/symbol_manager.h"
#include "host/text.h"

namespace vel {
namespace {

bool isWrite(std::string_view operatorName) {
  return equalIgnoringCase(operatorName, "SETBITOFPARAM");
}

constexpr InvocationShape parameters(int count) {
  return {count, count, InvocationShape::NameForm::UpperCase, InvocationShape::ListFault::None};
}

bool isBitParameter(const SymbolPOU* unit, const std::string& name) {
  const SymbolVar* parameter = unit != nullptr ? unit->param(name) : nullptr;
  return parameter != nullptr && parameter->varKind() == SymbolVar::kBitParameter;
}

}  // namespace

bool BitParamOperator::check(InternalInterface* ii, ASTNode* invocation,
                             std::vector<VELMessage>& messages, std::string& /*resultType*/,
                             const std::string& pouName) {
  if (isEmpty(invocation)) return false;
  const std::string written = operatorText(invocation);
  const bool writes = isWrite(written);
  const std::string scope = effectivePouName(invocation, pouName);
  const auto* unit =
      dynamic_cast<const SymbolPOU*>(ii->symbolManager()->symbol(scope.c_str(), "", Symbol::Pou));
  ASTNode* list = checkShape(ii, invocation, parameters(writes ? 3 : 2), messages);
  if (list == nullptr) return false;

  bool accepted = true;
  const auto refuse = [&](const std::string& what, const std::string& where) {
    report(ii, messages, message::kNotAllowed, invocation->pos(), what, where);
    accepted = false;
  };
  const auto typeOf = [&](ASTNode* node) {
    return AstNodeHelper::dataType(ii, node, scope, messages).type;
  };

  const std::string parameter = stringToUpper(AstNodeHelper::astText(list->leaf(0)));
  if (!isBitParameter(unit, parameter)) refuse(parameter, stringToUpper(written));
  ASTNode* bit = list->leaf(1);
  if (!AstNodeHelper::isIntegerType(typeOf(bit))) refuse(AstNodeHelper::astText(bit), scope);
  if (writes && typeOf(list->leaf(2)) != BasicDataType::Bool) {
    refuse(AstNodeHelper::astText(list->leaf(2)), scope);
  }
  return accepted;
}

std::string BitParamOperator::generate(Generator* gen, ASTNode* invocation) {
  const auto written = nameToken(invocation);
  if (!written) return {};
  const bool writes = isWrite(*written);
  const int count = writes ? 3 : 2;
  const ASTNode* list = argumentList(invocation, count);
  if (list == nullptr || list->leavesCount() < count) return {};

  GenClanAPI* api = clanApi(gen);
  std::string out = emptyCallText();
  out += writes ? "setBitOfParam" : "getBitOfParam";
  out += "(&offsetParam_";
  out += stringToUpper(AstNodeHelper::astText(list->leaf(0)));
  out += ',';
  out += api->expressionText(list->leaf(1));
  if (writes) {
    const std::string value = api->expressionText(list->leaf(2));
    if (!value.empty()) {
      out += ',';
      out += value;
    }
  }
  out += ')';
  return out;
}

}  // namespace vel
