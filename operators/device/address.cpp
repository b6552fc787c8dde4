#include "operators/device/address.h"

#include "host/ast_node_helper.h"
#include "host/internal_interface.h"

namespace vel {

HeapAddress addressOf(InternalInterface* ii, ASTNode* parameter) {
  HeapAddress address;
  ii->deviceMemory()->string2IecAddress(AstNodeHelper::astText(parameter), &address, false);
  return address;
}

std::uint32_t rawAddress(InternalInterface* ii, const HeapAddress& address) {
  return ii->deviceMemory()->HeapAddress2HeapRawAddr(address).address;
}

std::string_view iecKind(std::string_view text, std::size_t count) {
  return text.empty() ? text : text.substr(1, count);
}

}  // namespace vel
