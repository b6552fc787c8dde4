// Syntax trees for tests, made from a line of source text.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "host/declaration.h"
#include "host/expression.h"

namespace vel {

// Owns every node that it has made. Positions are offsets in the source line.
class TreeBuilder {
 public:
  ~TreeBuilder();

  // The invocation in `[target :=] NAME(parameter, ...)`, within a unit named `unit`.
  // A parameter is a literal (`5`, `INT#5`; `=5` for one that is no expression), a
  // variable, an access to a member or bit (`st.x`, `i.3`), an expression of any other
  // kind (`a + b`) or an invocation (`f(x)`); left out (`a, , b`), its leaf is null.
  // Without parentheses there is no parameter list, `NAME?` leaves it null, `NAME{a, b}`
  // makes the list a node of another kind, and `NAME[a]` a type specification. Without a
  // name, leaf 0 is null.
  Invocation* parse(const std::string& source, const char* unit = "P",
                    POUType unitType = POUType::Program);

  ASTNode* node(ASTType type, const std::vector<ASTNode*>& leaves, const std::string& text = "",
                std::size_t offset = 0);
  Expression* expression(Expression::Operator op, const std::vector<ASTNode*>& leaves,
                         const std::string& text, std::size_t offset);

  static std::string text(const ASTNode* node);

 private:
  template <class Node>
  Node* add(std::unique_ptr<Node> made, const std::vector<ASTNode*>& leaves,
            const std::string& text, std::size_t offset);
  Invocation* invocation(const std::string& text, std::size_t offset);
  ASTNode* parameter(const std::string& text, std::size_t offset);

  std::vector<std::unique_ptr<ASTNode>> nodes_;
  std::deque<std::string> texts_;
  std::deque<std::vector<ASTNode*>> leaves_;
};

}  // namespace vel
