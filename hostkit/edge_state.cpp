#include "hostkit/edge_state.h"

#include <memory>

#include "host/ast_node_helper.h"
#include "hostkit/operator_traits.h"

namespace hostkit {

std::string edgeStateName(const vel::ASTNode& invocation) {
  const std::string name = AstNodeHelper::astText(invocation.leaf(0));
  if (!operatorTraits(name).has(OperatorTraits::kRemembers)) return {};
  const std::string condition = AstNodeHelper::astText(invocation.leaf(1)->leaf(0));
  return AstNodeHelper::opExpTextToMd5HexText(name, condition);
}

void declareEdgeState(SymbolTable& symbols, const std::string& unit,
                      const vel::ASTNode& invocation) {
  constexpr std::int32_t kNoParameter = 0;
  const std::string name = edgeStateName(invocation);
  if (name.empty()) return;
  // Refused where the same call has declared it before.
  static_cast<void>(symbols.addVariable(
      unit, std::make_unique<vel::SymbolVar>(name, symbols.type("BOOL"), kNoParameter)));
}

}  // namespace hostkit
