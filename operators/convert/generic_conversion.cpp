#include "operators/convert/generic_conversion.h"

#include "core/emission.h"
#include "core/invocation.h"
#include "host/ast_node_helper.h"
#include "host/text.h"
#include "operators/convert/conversion_check.h"
#include "operators/convert/conversion_name.h"
#include "operators/convert/string_to_value.h"
#include "operators/convert/typed_conversion.h"

namespace vel {

std::string GeneralConvertOperator::staticCode(Generator* gen) {
  return RealToIntegerOperator(name).staticCode(gen);
}

bool GeneralConvertOperator::check(InternalInterface* ii, ASTNode* invocation,
                                   std::vector<VELMessage>& messages, std::string& resultType,
                                   const std::string& pouName) {
  return ConvertOperator(name).check(ii, invocation, messages, resultType, pouName);
}

std::string GeneralConvertOperator::generate(Generator* gen, ASTNode* invocation) {
  ASTNode* list = argumentList(invocation);
  if (list == nullptr || list->leavesCount() == 0) return {};

  const std::string written = stringToUpper(operatorText(invocation));
  const ConversionName parts(written);
  if (!parts.isGeneric()) return {};
  const SymbolDataType* target = findDataType(gen->ii, parts.target().data());
  if (target == nullptr) return {};
  // A node of another kind than a parameter list is accepted when it has a single leaf.
  if (list->type() != ASTType::ParameterList && list->leavesCount() != 1) return {};

  const BasicDataType source = typeForText(gen, invocation, list->leaf(0)).type;
  const bool isReal = source == BasicDataType::Real || source == BasicDataType::LReal;
  if (isReal && AstNodeHelper::isIntegerType(target->dataType())) {
    return RealToIntegerOperator(name).generate(gen, invocation);
  }
  if (isText(source)) {
    const std::string function =
        (source == BasicDataType::String ? "STRING_" : "WSTRING_") + written;
    return StrToOperator(function).generateNamedCall(gen, invocation, function);
  }
  return ConvertOperator(name).generate(gen, invocation);
}

}  // namespace vel
