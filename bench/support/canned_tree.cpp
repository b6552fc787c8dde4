#include "bench/support/canned_tree.h"

#include <utility>

namespace vel {
namespace {

// The constructors of nodes are the host's own.
template <class Node>
struct Made : Node {
  template <class... Arguments>
  explicit Made(Arguments... arguments) : Node(arguments...) {}
};

constexpr ASTType kOtherKind{7};

}  // namespace

std::string_view TreeBuilder::source(const ASTNode* node) {
  return node != nullptr ? std::string_view(node->source_, node->length_) : std::string_view();
}

template <class Node, class... Arguments>
Node* TreeBuilder::add(std::string_view source, std::vector<ASTNode*> leaves,
                       Arguments... arguments) {
  auto made = std::make_unique<Made<Node>>(arguments...);
  Node* node = made.get();
  nodes_.push_back(std::move(made));
  std::vector<ASTNode*>& kept = leaves_.emplace_back(std::move(leaves));
  node->ASTNode::leavesCount_ = static_cast<int>(kept.size());
  node->ASTNode::leaves_ = kept.data();
  node->ASTNode::source_ = source.data();
  node->ASTNode::length_ = static_cast<std::uint32_t>(source.size());
  for (ASTNode* leaf : kept) leaf->parent_ = node;
  return node;
}

Invocation* TreeBuilder::call(const char* name, const std::vector<Operand>& operands,
                              const Operand& target) {
  const auto expression = [this](const Operand& operand) {
    auto* made = add<Expression>(operand.source, {}, operand.op);
    made->setBasicType(operand.type);
    return made;
  };
  std::vector<ASTNode*> parameters;
  parameters.reserve(operands.size());
  for (const Operand& operand : operands) parameters.push_back(expression(operand));
  auto* list = add<ASTNode>("", std::move(parameters), ASTType::ParameterList);
  auto* token = add<ASTText>(name, {}, ASTType{2}, name);
  auto* call = add<Invocation>("", {token, list}, ASTType{3});
  ASTNode* statement = call;
  if (!target.source.empty()) {
    statement = add<ASTNode>("", {expression(target), call}, kOtherKind);
  }
  add<POUDeclaration>("", {statement}, kOtherKind, "filling_station_control", POUType::Program);
  return call;
}

}  // namespace vel
