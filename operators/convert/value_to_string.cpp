#include "operators/convert/value_to_string.h"

#include "core/emission.h"
#include "core/invocation.h"
#include "core/op_manager_api.h"
#include "host/ast_node_helper.h"
#include "host/internal_interface.h"
#include "host/text.h"
#include "operators/convert/conversion_check.h"
#include "operators/convert/conversion_name.h"

namespace vel {
namespace {

// The name of the runtime function for the type of `argument`. Records the call in the call
// tree when there is an operator of that name.
std::string functionFor(Generator* gen, ASTNode* invocation, ASTNode* argument,
                        const std::string& written) {
  std::string function =
      AstNodeHelper::basicDataTypeText(typeForText(gen, invocation, argument).type);
  function += '_';
  function += written;
  OpManagerAPI* registry = gen->ii->operatorManager();
  if (registry != nullptr && registry->findOperator(function) != nullptr) {
    recordFirmwareCall(gen, stringToUpper(function));
  }
  return function;
}

}  // namespace

bool ToStrOperator::check(InternalInterface* ii, ASTNode* invocation,
                          std::vector<VELMessage>& messages, std::string& resultType,
                          const std::string& pouName) {
  if (isEmpty(invocation)) return false;
  ConversionCheck conversion(ii, invocation, messages);
  const std::string& written = conversion.name();
  InvocationShape shape = ConversionCheck::kStringShape;
  const bool isGeneric = written == "TO_STRING" || written == "TO_WSTRING";
  // Unless the host declares exactly one input, no number of arguments is accepted.
  if (!isGeneric && hasParameterList(*invocation) && countInputs(ii, written) != 1) shape.most = 0;
  if (!conversion.hasArgument(shape, pouName)) return false;

  const ConversionEnds ends(written);
  const std::string source(ends.source);
  const SymbolDataType* named = ends.namesSource ? findDataType(ii, source.c_str()) : nullptr;
  if (isText(conversion.argumentType())) return conversion.mismatch(source);
  const BasicDataType namedType = named != nullptr ? named->dataType() : conversion.argumentType();
  if (!conversion.argumentIs(namedType) && !conversion.argumentConverts(namedType)) {
    return conversion.mismatch(source);
  }
  resultType = afterTo(written);
  return true;
}

std::string ToStrOperator::generate(Generator* gen, ASTNode* invocation) {
  const auto written = nameToken(invocation);
  ASTNode* list = argumentList(invocation);
  if (!written || list == nullptr) return {};

  std::string function = stringToUpper(*written);
  if (!ConversionEnds(function).namesSource) {
    if (list->leavesCount() == 0) return {};
    function = functionFor(gen, invocation, list->leaf(0), function);
  }
  std::string out = emptyCallText();
  out += function;
  out += '(';
  genArgs(gen, list, out);
  out += ", _returnString)";
  return out;
}

bool ToStrUniversalOperator::check(InternalInterface* ii, ASTNode* invocation,
                                   std::vector<VELMessage>& messages, std::string& resultType,
                                   const std::string& pouName) {
  return ToStrOperator(name).check(ii, invocation, messages, resultType, pouName);
}

std::string ToStrUniversalOperator::generate(Generator* gen, ASTNode* invocation) {
  return ToStrOperator(name).generate(gen, invocation);
}

}  // namespace vel
