#include "operators/select/selection.h"

#include <array>

#include "core/checks.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/expression.h"

namespace vel {
namespace {

constexpr InvocationShape kThreeParameters{3, 3};
// The third parameter is not read: neither its type nor its value is checked.
constexpr InvocationShape kConditionAndTwo = kThreeParameters.readingFirst(2);

struct Parameter {
  ASTNode* node;
  BasicDataType type;
};

bool isLiteral(const Expression* expression) {
  return expression != nullptr && expression->op() == Expression::Constant;
}

}  // namespace

std::string SelectOperator::staticCode(Generator* /*gen*/) {
  return "#define SEL(g, in0, in1) ((g) ? (in1) : (in0))";
}

bool SelectOperator::check(InternalInterface* ii, ASTNode* invocation,
                           std::vector<VELMessage>& messages, std::string& resultType,
                           const std::string& pouName) {
  ASTNode* list = checkShape(ii, invocation, kConditionAndTwo, messages);
  if (list == nullptr) return false;
  const std::string scope = effectivePouName(invocation, pouName);

  // For a condition that is no Expression the host is asked for the type of null, which is None.
  auto* condition = dynamic_cast<Expression*>(list->leaf(0));
  const BasicDataType conditionType =
      isLiteral(condition) ? condition->basicType()
                           : AstNodeHelper::dataType(ii, condition, scope, messages).type;
  if (conditionType != BasicDataType::Bool) {
    report(ii, messages, message::kExpectBool, invocation->pos(),
           AstNodeHelper::astText(list->leaf(0)));
    return false;
  }

  auto* first = dynamic_cast<Expression*>(list->leaf(1));
  if (isLiteral(first)) {
    resultType = AstNodeHelper::basicDataTypeText(first->basicType());
  } else if (first != nullptr && first->op() == Expression::Variable) {
    resultType = AstNodeHelper::dataType(ii, first, scope, messages).name;
  }
  return true;
}

// Without outer parentheses, because the contract fixes this text. The value is `mx` if mn > mx.
std::string LimitOperator::staticCode(Generator* /*gen*/) {
  return "#define LIMIT(mn, in, mx) (mn <= mx) ? ((((in) < (mn)) ? (mn) : ((in) > (mx)) ? (mx) : "
         "(in))) : mx";
}

bool LimitOperator::check(InternalInterface* ii, ASTNode* invocation,
                          std::vector<VELMessage>& messages, std::string& resultType,
                          const std::string& pouName) {
  ASTNode* list = checkShape(ii, invocation, kThreeParameters, messages);
  if (list == nullptr) return false;
  const std::string scope = effectivePouName(invocation, pouName);
  const auto typed = [&](int i) {
    ASTNode* node = list->leaf(i);
    return Parameter{node, AstNodeHelper::dataType(ii, node, scope, messages).type};
  };
  const Parameter input = typed(1);
  resultType = AstNodeHelper::basicDataTypeText(input.type);
  const Parameter minimum = typed(0);
  const Parameter maximum = typed(2);

  // If one of the three is a REAL or LREAL, all have to convert to that; LREAL takes precedence.
  BasicDataType target = input.type;
  for (const Parameter& parameter : {minimum, input, maximum}) {
    if (!AstNodeHelper::isFloatType(parameter.type)) continue;
    target = parameter.type;
    if (target == BasicDataType::LReal) break;
  }

  const std::string targetText = AstNodeHelper::basicDataTypeText(target);
  for (const Parameter& parameter : {minimum, input, maximum}) {
    checkAssignType(ii, parameter.node, targetText, target,
                    AstNodeHelper::basicDataTypeText(parameter.type), parameter.type, scope,
                    messages);
  }
  return true;
}

}  // namespace vel
