#include "operators/convert/trunc.h"

#include "core/emission.h"
#include "core/invocation.h"
#include "host/ast_node_helper.h"
#include "operators/convert/conversion_check.h"

namespace vel {

bool TruncOperator::check(InternalInterface* ii, ASTNode* invocation,
                          std::vector<VELMessage>& messages, std::string& resultType,
                          const std::string& pouName) {
  if (isEmpty(invocation)) return false;
  ConversionCheck conversion(ii, invocation, messages);
  if (!conversion.hasArgument(ConversionCheck::kShape, pouName)) return false;

  const BasicDataType type = conversion.argumentType();
  const bool isNumber = AstNodeHelper::isIntegerType(type) || AstNodeHelper::isFloatType(type);
  if (!isNumber || !conversion.argumentConverts(BasicDataType::LReal)) {
    return conversion.mismatch(conversion.argumentText());
  }
  resultType = AstNodeHelper::basicDataTypeText(BasicDataType::DInt);
  return true;
}

std::string TruncOperator::generate(Generator* gen, ASTNode* invocation) {
  ASTNode* list = argumentList(invocation);
  if (list == nullptr) return {};

  std::string out = emptyCallText();
  out += "((i32)";
  genArgs(gen, list, out);
  out += ')';
  return out;
}

}  // namespace vel
