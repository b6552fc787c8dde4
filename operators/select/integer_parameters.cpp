#include "operators/select/integer_parameters.h"

#include "core/invocation.h"
#include "core/messages.h"

namespace vel {

std::optional<BasicDataType> checkInteger(InternalInterface* ii, ASTNode* invocation,
                                          ASTNode* parameter, const MessageFormat& fault,
                                          const std::string& scope,
                                          std::vector<VELMessage>& messages) {
  const BasicDataType type = AstNodeHelper::dataType(ii, parameter, scope, messages).type;
  if (AstNodeHelper::isIntegerType(type)) return type;
  report(ii, messages, fault, invocation->pos(), operatorText(invocation),
         AstNodeHelper::astText(parameter));
  return std::nullopt;
}

std::optional<BasicDataType> checkShiftOperands(InternalInterface* ii, ASTNode* invocation,
                                                const ASTNode& list, const MessageFormat& fault,
                                                const std::string& scope,
                                                std::vector<VELMessage>& messages,
                                                std::string& resultType) {
  const auto moved = checkInteger(ii, invocation, list.leaf(0), fault, scope, messages);
  if (!moved) return std::nullopt;
  resultType = AstNodeHelper::basicDataTypeText(*moved);
  const auto count = checkInteger(ii, invocation, list.leaf(1), fault, scope, messages);
  return count ? moved : std::nullopt;
}

}  // namespace vel
