#include "core/checks.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/case_folding.h"
#include "core/conversion_message.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/symbol.h"
#include "host/symbol_manager.h"
#include "host/text.h"

namespace vel {
namespace {

bool isBitStringName(std::string_view name) {
  constexpr std::array<std::string_view, 4> kNames = {"BYTE", "WORD", "DWORD", "LWORD"};
  return std::any_of(kNames.begin(), kNames.end(),
                     [name](std::string_view known) { return equalIgnoringCase(name, known); });
}

// Two types of these kinds are the same when their names are equal.
bool isComparedByName(BasicDataType type) {
  return type == BasicDataType::Structure || type == BasicDataType::Enumeration ||
         type == BasicDataType::FunctionBlock;
}

}  // namespace

ASTNode* checkShape(InternalInterface* ii, ASTNode* invocation, const InvocationShape& shape,
                    std::vector<VELMessage>& messages) {
  const bool twoLeaves = shape.leaves == InvocationShape::Leaves::NameAndList;
  if (twoLeaves ? invocation == nullptr : isEmpty(invocation)) return nullptr;

  const auto operatorName = [&] {
    std::string written = operatorText(invocation);
    return shape.nameForm == InvocationShape::NameForm::UpperCase ? stringToUpper(written)
                                                                  : written;
  };
  ASTNode* list = twoLeaves && invocation->leavesCount() != 2 ? nullptr : leafOf(invocation, 1);
  if (list != nullptr && list->type() != ASTType::ParameterList &&
      shape.listFault != InvocationShape::ListFault::None) {
    if (shape.listFault == InvocationShape::ListFault::Abnormal) {
      report(ii, messages, message::kAbnormalParameters, invocation->pos(), operatorName());
    } else {
      report(ii, messages, message::kNotAllowed, invocation->pos(), AstNodeHelper::astText(list),
             operatorName());
    }
    return nullptr;
  }
  if (list == nullptr || list->leavesCount() < shape.least || list->leavesCount() > shape.most ||
      !hasLeaves(*list, shape.readCount)) {
    report(ii, messages, message::kParameterCount, invocation->pos(), operatorName());
    return nullptr;
  }
  return list;
}

bool checkParams(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages) {
  // Requested for its side effect: a host may create its symbol table on the first request.
  ii->symbolManager();
  if (isEmpty(invocation)) return false;
  const int inputs = hasParameterList(*invocation) ? countInputs(ii, operatorText(invocation)) : 0;
  const InvocationShape counted{inputs, inputs};
  return checkShape(ii, invocation, counted.readingFirst(0), messages) != nullptr;
}

int countInputs(InternalInterface* ii, const std::string& operatorName) {
  const auto* unit = dynamic_cast<const SymbolPOU*>(
      ii->symbolManager()->symbol(operatorName.c_str(), "", Symbol::Pou));
  if (unit == nullptr) return 0;

  const bool isFunction = unit->type() == POUType::Function;
  int inputs = 0;
  for (int i = 0, count = unit->paramsCount(); i < count; ++i) {
    const SymbolVar* parameter = unit->param(i);
    if (parameter == nullptr) continue;
    const std::int32_t kind = parameter->varKind();
    if (kind == SymbolVar::kInput || (isFunction && kind == SymbolVar::kInOut)) ++inputs;
  }
  return inputs;
}

std::string resolveTypeText(InternalInterface* ii, const std::string& scope, BasicDataType type,
                            const std::string& typeText) {
  const auto* variable = dynamic_cast<const SymbolVar*>(
      ii->symbolManager()->symbol(typeText.c_str(), scope.c_str(), Symbol::Variable));
  const SymbolDataType* declared = variable != nullptr ? variable->dataType() : nullptr;
  std::string name = declared != nullptr ? declared->typeName() : typeText;
  return isBitStringName(name) ? name : AstNodeHelper::basicDataTypeText(type);
}

bool checkAssignType(InternalInterface* ii, ASTNode* source, const std::string& targetText,
                     BasicDataType target, const std::string& sourceText, BasicDataType sourceType,
                     const std::string& scope, std::vector<VELMessage>& messages) {
  const std::string targetName = resolveTypeText(ii, scope, target, targetText);
  const std::string sourceName = resolveTypeText(ii, scope, sourceType, sourceText);
  if (isComparedByName(target) && stringToUpper(sourceText) != stringToUpper(targetText)) {
    report(ii, messages, message::kCannotConvert, positionOf(source), sourceText, targetText);
    return false;
  }

  const int rating =
      AstNodeHelper::compareDataType(ii, target, sourceType, sourceText.c_str(), scope);
  if (rating >= 0) return true;

  const MessageFormat& what = conversionMessage(rating, target, sourceType);
  if (&what == &message::kInformationLoss) {
    report(ii, messages, what, positionOf(source), AstNodeHelper::basicDataTypeText(sourceType),
           AstNodeHelper::basicDataTypeText(target));
    return true;
  }
  if (&what == &message::kConstantTooLarge) {
    report(ii, messages, what, positionOf(source), sourceText, sourceName);
    return false;
  }
  report(ii, messages, what, positionOf(source), sourceName, targetName);
  return what.code != message::kCannotConvert.code;
}

}  // namespace vel
