// Syntax trees for tests, made from a line of source text.
#pragma once

#include <string>

#include "hostkit/tree.h"

// Positions are offsets in the source line.
class TestTree : public hostkit::Tree {
 public:
  // The invocation in `[target :=] NAME(parameter, ...)`, within a unit named `unit`, which
  // may be null.
  // A parameter is a literal (`5`, `INT#5`; `=5` for one that is no expression), a
  // variable, an access to a member or bit (`st.x`, `i.3`), an expression of any other
  // kind (`a + b`) or an invocation (`f(x)`); left out (`a, , b`), its leaf is null.
  // Without parentheses there is no parameter list, `NAME?` leaves it null, `NAME{a, b}`
  // makes the list a node of another kind, and `NAME[a]` a type specification. Without a
  // name, leaf 0 is null.
  Invocation* parse(const std::string& source, const char* unit = "P",
                    vel::POUType unitType = vel::POUType::Program);

  vel::ASTNode* node(vel::ASTType type, Leaves leaves, const std::string& text = "",
                     std::size_t offset = 0);

  // Empty for null.
  static std::string text(const vel::ASTNode* node);

 private:
  Invocation* call(const std::string& text, std::size_t offset);
  vel::ASTNode* parameter(const std::string& text, std::size_t offset);
};
