#include "operators/select/macro_operator.h"

#include "core/emission.h"
#include "core/invocation.h"
#include "host/ast_node_helper.h"
#include "host/text.h"

namespace vel {

bool StaticOperator::check(InternalInterface* /*ii*/, ASTNode* /*invocation*/,
                           std::vector<VELMessage>& /*messages*/, std::string& /*resultType*/,
                           const std::string& /*pouName*/) {
  return true;
}

std::string StaticOperator::generate(Generator* gen, ASTNode* invocation) {
  const auto written = nameToken(invocation);
  ASTNode* list = argumentList(invocation);
  if (!written || list == nullptr) return {};

  const std::string macro = stringToUpper(*written);
  std::string out = emptyCallText();
  bool cast = false;
  if ((macro == "SHL" || macro == "SHR") && list->leavesCount() > 0) {
    const BasicDataType shifted = typeForText(gen, invocation, list->leaf(0)).type;
    cast = shifted != BasicDataType::Undetermined;
    if (cast) {
      out += "((";
      out += AstNodeHelper::basicDataToCTypeText(shifted);
      out += ")(";
    }
  }
  out += macro;
  out += '(';
  genArgs(gen, list, out);
  out += cast ? ")))" : ")";
  return out;
}

}  // namespace vel
