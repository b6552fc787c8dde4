#include "operators/select/edge.h"

#include "core/checks.h"
#include "core/emission.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/symbol_manager.h"
#include "host/text.h"

namespace vel {
namespace {

constexpr InvocationShape kOneParameter{1, 1, InvocationShape::NameForm::AsWritten,
                                        InvocationShape::ListFault::Abnormal};

// The address of the hidden variable `state` in C; empty when the unit keeps none.
std::string stateText(Generator* gen, SymbolVar* state, const POUDeclaration& unit) {
  constexpr int kInStaticVariables = 2;
  if (isKeptInDeviceMemory(unit)) return memoryByteText(state->backendAddress().address);
  if (unit.kind == kInStaticVariables || unit.type() == POUType::FunctionBlock) {
    return "&" + clanApi(gen)->variableText(state, 16, nameOf(&unit));
  }
  return {};
}

}  // namespace

MepMefOperator::MepMefOperator(const std::string& operatorName)
    : StaticOperator(operatorName), upperName(stringToUpper(operatorName)) {}

bool MepMefOperator::check(InternalInterface* ii, ASTNode* invocation,
                           std::vector<VELMessage>& messages, std::string& resultType,
                           const std::string& pouName) {
  ASTNode* list = checkShape(ii, invocation, kOneParameter, messages);
  if (list == nullptr) return false;

  ASTNode* condition = list->leaf(0);
  const BasicDataType type =
      AstNodeHelper::dataType(ii, condition, effectivePouName(invocation, pouName), messages).type;
  if (type != BasicDataType::Bool) {
    const std::string text = AstNodeHelper::astText(condition);
    if (!AstNodeHelper::stringCanConvertToBool(text)) {
      report(ii, messages, message::kNotAllowed, invocation->pos(), text, operatorText(invocation));
      return false;
    }
  }
  resultType = "BOOL";
  return true;
}

std::string MepMefOperator::generate(Generator* gen, ASTNode* invocation) {
  ASTNode* list = argumentList(invocation);
  if (list == nullptr || list->leavesCount() != 1) return {};

  ASTNode* condition = list->leaf(0);
  const std::string stateName = AstNodeHelper::opExpTextToMd5HexText(
      operatorText(invocation), AstNodeHelper::astText(condition));
  const POUDeclaration* unit = enclosingPou(invocation);
  const std::string scope = nameOf(unit);
  auto* state = dynamic_cast<SymbolVar*>(
      gen->ii->symbolManager()->symbol(stateName.c_str(), scope.c_str(), Symbol::Variable));
  if (state == nullptr || unit == nullptr) return {};
  const std::string cell = stateText(gen, state, *unit);
  if (cell.empty()) return {};

  std::string out = emptyCallText();
  out += upperName == "MEP" ? "(_mep(" : "(_mef(";
  out += clanApi(gen)->expressionText(condition);
  out += ',';
  out += cell;
  out += "))";
  return out;
}

std::string MepOperator::staticCode(Generator* /*gen*/) {
  return "inline static u8 _mep(u8 cond, u8* ps){u8 s = cond && !*ps; *ps = cond; return s;}";
}

std::string MefOperator::staticCode(Generator* /*gen*/) {
  return "inline static u8 _mef(u8 cond, u8* ps){u8 s = !cond && *ps; *ps = cond; return s;}";
}

}  // namespace vel
