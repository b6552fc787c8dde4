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

namespace {

class PlacedVariable final : public vel::SymbolVar {
 public:
  PlacedVariable(const std::string& name, vel::SymbolDataType* type, vel::HeapRawAddr place)
      : SymbolVar(name, type, 0) {
    backendAddress_ = place;
  }
};

}  // namespace

void declareEdgeState(SymbolTable& symbols, DeviceMap& memory, const std::string& unit,
                      const vel::ASTNode& invocation) {
  const std::string name = edgeStateName(invocation);
  if (name.empty() || symbols.variable(name, unit) != nullptr) return;
  symbols.addVariable(
      unit, std::make_unique<PlacedVariable>(name, symbols.type("BOOL"), memory.allocateState()));
}

}  // namespace hostkit
