// Invocations for the canned host.
#pragma once

#include <deque>
#include <memory>
#include <string_view>
#include <vector>

#include "host/declaration.h"
#include "host/expression.h"

// A parameter or target. `source` is zero-terminated and outlives the tree.
struct Operand {
  std::string_view source;
  vel::BasicDataType type = vel::BasicDataType::None;
  Expression::Operator op = Expression::Variable;
};

namespace vel {

// Owns every node that it has made.
class TreeBuilder {
 public:
  // `name(operands)` in a program, the right side of an assignment to `target` when it
  // has a source. `name` outlives the tree.
  Invocation* call(const char* name, const std::vector<Operand>& operands, const Operand& target);

  static std::string_view source(const ASTNode* node);

 private:
  template <class Node, class... Arguments>
  Node* add(std::string_view source, std::vector<ASTNode*> leaves, Arguments... arguments);

  std::vector<std::unique_ptr<ASTNode>> nodes_;
  std::deque<std::vector<ASTNode*>> leaves_;
};

}  // namespace vel
