#include "operators/device/address.h"

#include "host/ast_node_helper.h"

namespace vel {

HeapAddress addressOf(InternalInterface* ii, ASTNode* parameter) {
  HeapAddress address;
  parseAddress(ii, AstNodeHelper::astText(parameter), address);
  return address;
}

std::string_view iecKind(std::string_view text, std::size_t count) {
  return text.empty() ? text : text.substr(1, count);
}

}  // namespace vel
