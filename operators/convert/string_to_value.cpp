#include "operators/convert/string_to_value.h"

#include "core/checks.h"
#include "core/emission.h"
#include "core/invocation.h"
#include "host/text.h"
#include "operators/convert/conversion_check.h"
#include "operators/convert/conversion_name.h"

namespace vel {

bool StrToOperator::check(InternalInterface* ii, ASTNode* invocation,
                          std::vector<VELMessage>& messages, std::string& resultType,
                          const std::string& pouName) {
  if (isEmpty(invocation)) return false;
  if (!checkParams(ii, invocation, messages)) return false;

  ConversionCheck conversion(ii, invocation, messages);
  const ConversionEnds ends(conversion.name());
  resultType = ends.target;
  if (!conversion.hasArgument(ConversionCheck::kStringShape, pouName)) return false;
  return isText(conversion.argumentType()) || conversion.cannotConvert(ends.source);
}

std::string StrToOperator::generateNamedCall(Generator* gen, ASTNode* invocation,
                                             const std::string& function) {
  ASTNode* list = argumentList(invocation);
  if (list == nullptr) return {};
  recordFirmwareCall(gen, stringToUpper(function));
  return callText(gen, function, list);
}

}  // namespace vel
