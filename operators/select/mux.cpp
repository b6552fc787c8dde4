#include "operators/select/mux.h"

#include <algorithm>
#include <optional>

#include "core/checks.h"
#include "core/emission.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/call_tree.h"
#include "host/expression.h"
#include "operators/select/integer_parameters.h"

namespace vel {
namespace {

constexpr InvocationShape kSelectorAndInputs{3, InvocationShape::kNoLimit};

// Shared by the checks of one invocation.
struct Context {
  InternalInterface* ii;
  ASTNode* invocation;
  const std::string& scope;
  std::vector<VELMessage>& messages;

  BasicDataType typeOf(ASTNode* node) const {
    return AstNodeHelper::dataType(ii, node, scope, messages).type;
  }
  std::optional<BasicDataType> refuse(ASTNode* input, TextLocation where) const {
    report(ii, messages, message::kNotAllowed, where, AstNodeHelper::astText(input),
           operatorText(invocation));
    return std::nullopt;
  }
};

// The type of the result; nullopt when an input has an unsuitable type.
std::optional<BasicDataType> resultOf(const Context& context, const ASTNode& list) {
  constexpr BasicDataType kFirstTime = BasicDataType::Time;
  constexpr BasicDataType kLastTime = BasicDataType::DateAndTime;
  BasicDataType result = BasicDataType::None;
  for (int i = 1; i < list.leavesCount(); ++i) {
    ASTNode* input = list.leaf(i);
    const BasicDataType type = context.typeOf(input);
    if (type == BasicDataType::None) {
      if (AstNodeHelper::stringCanConvertToBool(AstNodeHelper::astText(input))) {
        return BasicDataType::Bool;
      }
      return context.refuse(input, context.invocation->pos());
    }
    if (type > kLastTime) return context.refuse(input, input->pos());
    if (type == BasicDataType::Bool) return type;
    // A time or date determines the result type only if it is the first input.
    if (type < kFirstTime) {
      result = std::max(result, type);
    } else if (i == 1) {
      return type;
    }
  }
  return result;
}

void record(ASTNode* node, BasicDataType type) {
  if (auto* expression = dynamic_cast<Expression*>(node)) expression->setBasicType(type);
  if (auto* call = dynamic_cast<Invocation*>(node)) call->setBasicType(type);
}

const char* functionFor(BasicDataType result) {
  switch (result) {
    case BasicDataType::LInt:
    case BasicDataType::ULInt:
    case BasicDataType::LTime:
      return "FC_MUX_LONGLONG";
    case BasicDataType::Real:
    case BasicDataType::LReal:
      return "FC_MUX_LONGREAL";
    default:
      return "FC_MUX_INT";
  }
}

// The literal of `parameter`; null when it is another expression.
ConstantValue* literalOf(const ASTNode* parameter) {
  const auto* expression = dynamic_cast<const Expression*>(parameter);
  const bool isLiteral = expression != nullptr && expression->op() == Expression::Constant;
  return isLiteral ? dynamic_cast<ConstantValue*>(leafOf(expression, 0)) : nullptr;
}

}  // namespace

bool MUXOperator::check(InternalInterface* ii, ASTNode* invocation,
                        std::vector<VELMessage>& messages, std::string& resultType,
                        const std::string& pouName) {
  const ASTNode* list = checkShape(ii, invocation, kSelectorAndInputs, messages);
  if (list == nullptr) return false;

  const std::string scope = effectivePouName(invocation, pouName);
  if (!checkInteger(ii, invocation, list->leaf(0), message::kNotInteger, scope, messages)) {
    return false;
  }
  const Context context{ii, invocation, scope, messages};
  const std::optional<BasicDataType> result = resultOf(context, *list);
  if (!result) return false;
  record(invocation, *result);
  resultType = AstNodeHelper::basicDataTypeText(*result);

  bool accepted = true;
  for (int i = 1; i < list->leavesCount(); ++i) {
    ASTNode* input = list->leaf(i);
    const BasicDataType type = context.typeOf(input);
    if (auto* expression = dynamic_cast<Expression*>(input)) expression->setBasicType(type);
    accepted &= checkAssignType(ii, input, resultType, *result,
                                AstNodeHelper::basicDataTypeText(type), type, scope, messages);
  }
  return accepted;
}

std::string MUXOperator::generate(Generator* gen, ASTNode* invocation) {
  const ASTNode* list = argumentList(invocation);
  const int count = list != nullptr ? list->leavesCount() : 0;
  if (count == 0) return {};

  CallTree* calls = gen->ii->callTree();
  const std::string caller = enclosingPouName(invocation);
  const auto record = [&](const char* callee) {
    if (calls != nullptr) calls->addOperatorCaller(caller, callee, invocation->pos());
  };
  record("MUX");
  const BasicDataType result = recordedType(invocation, BasicDataType::UInt);
  const char* function = functionFor(result);
  record(function);

  GenClanAPI* api = clanApi(gen);
  const std::string cast = "(" + AstNodeHelper::basicDataToCTypeText(result) + ")";
  std::string out = emptyCallText();
  out += '(';
  out += cast;
  out += function;
  out += '(';
  out += std::to_string(count - 1);
  for (int i = 0; i < count; ++i) {
    ASTNode* parameter = list->leaf(i);
    out += ", ";
    if (i > 0) out += cast;
    out += api->expressionText(parameter);
    if (ConstantValue* literal = literalOf(parameter)) {
      api->prepareConstant(out, literal->basicData().type());
    }
  }
  out += "))";
  return out;
}

}  // namespace vel
