#include "operators/func/move.h"

#include "core/checks.h"
#include "core/emission.h"
#include "core/invocation.h"
#include "host/ast_node_helper.h"
#include "host/internal_interface.h"

namespace vel {
namespace {

constexpr InvocationShape kOneParameter{1, 1};

}  // namespace

bool MoveOperator::check(InternalInterface* ii, ASTNode* invocation,
                         std::vector<VELMessage>& messages, std::string& resultType,
                         const std::string& pouName) {
  // Requested for its side effect: a host may create its symbol table on the first request.
  ii->symbolManager();
  ASTNode* list = checkShape(ii, invocation, kOneParameter, messages);
  if (list == nullptr) return false;

  const std::string scope = effectivePouName(invocation, pouName);
  ASTNode* input = list->leaf(0);
  const BasicDataType type = AstNodeHelper::dataType(ii, input, scope, messages).type;
  resultType = AstNodeHelper::basicDataTypeText(type);
  if (type == BasicDataType::None) return false;
  if (!isAssigned(*invocation)) return true;

  const BasicDataType target =
      AstNodeHelper::dataType(ii, invocation->parent()->leaf(0), scope, messages).type;
  return checkAssignType(ii, input, AstNodeHelper::basicDataTypeText(target), target, resultType,
                         type, scope, messages);
}

std::string MoveOperator::generate(Generator* gen, ASTNode* invocation) {
  ASTNode* list = argumentList(invocation);
  if (list == nullptr) return {};

  std::string out = emptyCallText();
  out += '(';
  genArgs(gen, list, out);
  out += ')';
  return out;
}

}  // namespace vel
