#include "operators/func/numeric.h"

#include "core/case_folding.h"
#include "core/checks.h"
#include "core/emission.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/expression.h"

namespace vel {

namespace {

// checkParams has counted the parameters; only the first is read.
constexpr InvocationShape kFirstParameter =
    InvocationShape{1, InvocationShape::kNoLimit}.readingFirst(1);

bool isReal(BasicDataType type) {
  return type == BasicDataType::Real || type == BasicDataType::LReal;
}

}  // namespace

bool checkNumericFunction(InternalInterface* ii, ASTNode* invocation,
                          std::vector<VELMessage>& messages, std::string& resultType) {
  // Requested for its side effect: a host may create its symbol table on the first request.
  ii->symbolManager();
  if (isEmpty(invocation) || !checkParams(ii, invocation, messages)) return false;
  // If the host declares no inputs, checkParams has accepted an empty list.
  ASTNode* list = checkShape(ii, invocation, kFirstParameter, messages);
  if (list == nullptr) return false;

  const std::string scope = enclosingPouName(invocation);
  const std::string written = operatorText(invocation);
  const BasicDataType type = AstNodeHelper::dataType(ii, list->leaf(0), scope, messages).type;
  const std::string typeText = AstNodeHelper::basicDataTypeText(type);
  if (!AstNodeHelper::isIntegerType(type) && !isReal(type)) {
    report(ii, messages, message::kUnsuitableType, invocation->pos(), written, typeText);
    return false;
  }
  if (equalIgnoringCase(written, "ABS")) {
    resultType = typeText;
    return true;
  }
  const BasicDataType result =
      type == BasicDataType::Real ? BasicDataType::Real : BasicDataType::LReal;
  resultType = AstNodeHelper::basicDataTypeText(result);
  return checkAssignType(ii, invocation, resultType, result, typeText, type, scope, messages);
}

bool NumericOperator::check(InternalInterface* ii, ASTNode* invocation,
                            std::vector<VELMessage>& messages, std::string& resultType,
                            const std::string& /*pouName*/) {
  return checkNumericFunction(ii, invocation, messages, resultType);
}

std::string ABSOperator::generate(Generator* gen, ASTNode* invocation) {
  ASTNode* list = argumentList(invocation);
  if (list == nullptr || list->leavesCount() == 0) return {};

  const auto* parameter = dynamic_cast<const Expression*>(list->leaf(0));
  const BasicDataType type =
      parameter != nullptr ? parameter->basicType() : typeForText(gen, invocation, invocation).type;
  return callText(gen, isReal(type) ? "FABS" : "ABS", list);
}

}  // namespace vel
