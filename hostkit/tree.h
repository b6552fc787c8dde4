// Syntax trees for hosts that have none of their own.
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

// Node kinds of the kit's own, beside those of vel::ASTType.
constexpr vel::ASTType kWordNode{100};
constexpr vel::ASTType kInvocationNode{101};
constexpr vel::ASTType kUnitNode{102};
constexpr vel::ASTType kStatementNode{103};

// Of the form of a name: letters, digits and underscores, no digit first.
bool isName(std::string_view text);

// Owns every node that it makes, with its texts.
class Tree {
 public:
  using Leaves = std::vector<vel::ASTNode*>;

  // Where a node stands: its source text, which is copied, and the position of the first
  // character of that.
  struct Span {
    std::string_view source;
    vel::TextLocation start = vel::TextLocation();
  };

  Tree() = default;
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  // A node of any class, of which `arguments` are the constructor's. Leaves may be null.
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

  // A leaf that is one word, such as the name of an operator.
  vel::ASTText* word(Span span) {
    return make<vel::ASTText>(span, {}, kWordNode, keep(span.source));
  }
  Expression* expression(Span span, Expression::Operator op, Leaves leaves = {}) {
    return make<Expression>(span, std::move(leaves), op);
  }
  // An expression that is a literal, of the type of that name; `fixed` when the source names
  // it. The type is recorded on both nodes.
  Expression* literal(Span span, vel::BasicDataType type, std::string_view typeName, bool fixed);
  // The same for the literal that the source is; null where it is none.
  Expression* literal(Span span);
  // The variable or address that the source names, or the bit of a variable (`x.3`); null for
  // a source of another form.
  Expression* place(Span span);
  // `name(parameters)`, the parameters' list taking the span `list`.
  Invocation* invocation(Span span, vel::ASTText* name, Span list, Leaves parameters);
  // The declaration of a program unit around `leaves`. Its `kind` is the number of its type: a
  // program keeps the state of MEP and MEF in device memory, a function in static variables.
  POUDeclaration* unit(std::string_view name, vel::POUType type, Leaves leaves);

  // A copy that lives as long as the tree, zero-terminated.
  const char* keep(std::string_view text) { return texts_.emplace_back(text).c_str(); }

 private:
  // The constructors of nodes are for classes derived from them.
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
