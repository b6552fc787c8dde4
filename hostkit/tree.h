// Syntax trees, for hosts that do not have any.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/declaration.h"
#include "host/expression.h"
#include "hostkit/tree_builder.h"

namespace hostkit {

// Node kinds that the kit adds to those of vel::ASTType.
constexpr vel::ASTType kWordNode{100};
constexpr vel::ASTType kInvocationNode{101};
constexpr vel::ASTType kUnitNode{102};
constexpr vel::ASTType kStatementNode{103};

// True for letters, digits and underscores that do not begin with a digit.
bool isName(std::string_view text);

// Creates nodes, and owns them and their strings.
class Tree {
 public:
  using Leaves = std::vector<vel::ASTNode*>;

  // The source text of a node, which is copied, and the position of its first character.
  struct Span {
    std::string_view source;
    vel::TextLocation start = vel::TextLocation();
  };

  Tree() = default;
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  // Creates a node of any class with `arguments` for its constructor. Leaves may be null.
  template <class Node, class... Arguments>
  Node* make(Span span, Leaves leaves, Arguments&&... arguments) {
    auto made = std::make_unique<Made<Node>>(std::forward<Arguments>(arguments)...);
    Node* const node = made.get();
    nodes_.push_back(std::move(made));
    Leaves& kept = leaves_.emplace_back(std::move(leaves));
    vel::TreeBuilder::setLeaves(*node, kept.data(), static_cast<std::int32_t>(kept.size()));
    vel::TreeBuilder::setSpan(*node, span.start, keep(span.source));
    return node;
  }

  // A leaf that is one token, such as the name of an operator.
  vel::ASTText* word(Span span) {
    return make<vel::ASTText>(span, {}, kWordNode, keep(span.source));
  }
  Expression* expression(Span span, Expression::Operator op, Leaves leaves = {}) {
    return make<Expression>(span, std::move(leaves), op);
  }
  // An expression for a literal of the given type; `fixed` for a typed literal (`INT#5`). The
  // type is recorded on the expression and on the ConstantValue.
  Expression* literal(Span span, vel::BasicDataType type, std::string_view typeName, bool fixed);
  // The same by parsing the source text; null when it is not a literal.
  Expression* literal(Span span);
  // An expression for a variable, an address, or a bit of a variable (`x.3`); null for any other
  // source text.
  Expression* place(Span span);
  // `name(parameters)`, with a parameter list at the span `list`.
  Invocation* invocation(Span span, vel::ASTText* name, Span list, Leaves parameters);
  // The declaration of a program unit with `leaves`. Its `kind` is the number of its type, so that
  // programs keep the state of MEP and MEF in device memory, and functions in static variables.
  POUDeclaration* unit(std::string_view name, vel::POUType type, Leaves leaves);

  // A zero-terminated copy that lives as long as the tree.
  const char* keep(std::string_view text) { return texts_.emplace_back(text).c_str(); }

 private:
  // Gives access to the constructors of nodes, which are protected.
  template <class Node>
  struct Made final : Node {
    template <class... Arguments>
    explicit Made(Arguments&&... arguments) : Node(std::forward<Arguments>(arguments)...) {}
  };

  std::vector<std::unique_ptr<vel::ASTNode>> nodes_;
  std::deque<Leaves> leaves_;
  std::deque<std::string> texts_;
};

}  // namespace hostkit
