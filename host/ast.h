// The syntax tree. Every node belongs to the host and outlives the call in which the
// plugin sees it. The plugin creates no nodes; all that it changes in one is the basic
// type of an expression or an invocation (host/expression.h).
#pragma once

#include <cstdint>

#include "host/export.h"
#include "host/text_location.h"

class POUDeclaration;

namespace vel {

class TreeBuilder;  // defined by the host, which creates and links nodes with it

// Node kinds that the plugin distinguishes. The host is free to use all other numbers.
enum class ASTType : std::int32_t {
  NamedTypeSpec = 14,
  StringTypeSpec = 18,
  SubrangeTypeSpec = 20,
  ConstantValue = 23,
  ArrayTypeSpec = 26,
  EnumTypeSpec = 29,
  StructTypeSpec = 35,
  PointerTypeSpec = 37,
  ReferenceTypeSpec = 42,
  ParameterList = 52,
  Expression = 63,
};

// Shape of an operator's invocation: leaf 0 is the operator's name as written,
// leaf 1 the parameter list (kind 52) whose leaves are the actual parameters in
// source order. An invocation with fewer than two leaves has no list.
class VEL_HOST_API ASTNode {
 public:
  virtual ~ASTNode();
  ASTNode(const ASTNode&) = delete;
  ASTNode& operator=(const ASTNode&) = delete;

  ASTType type() const;
  int leavesCount() const;
  // Leaf `i`, from 0 to leavesCount() - 1; may be null where the program leaves
  // an optional element out. The plugin passes no other index.
  ASTNode* leaf(int i) const;
  // The enclosing node, null at the root.
  ASTNode* parent() const;
  // The position at which messages about the node are reported.
  TextLocation pos() const;

  // The declaration of the program unit that contains `node`, null when there is
  // none. The plugin never passes null.
  static ASTNode* getPouAST(ASTNode* node);

 protected:
  explicit ASTNode(ASTType type);

 private:
  friend class TreeBuilder;
  friend class ::POUDeclaration;

  ASTType type_;
  std::int32_t leavesCount_ = 0;
  ASTNode** leaves_ = nullptr;
  ASTNode* parent_ = nullptr;
  TextLocation pos_;
  const char* source_ = "";    // source text from pos_ on, not owned
  std::uint32_t length_ : 31;  // of that text, in bytes
  std::uint32_t isUnit_ : 1;   // set for a POUDeclaration
};

// A leaf that is one token, such as the name of an operator.
class VEL_HOST_API ASTText : public ASTNode {
 public:
  // Zero-terminated, as written in the source; null for a missing token. The plugin copies
  // the string before its next request to the host.
  const char* text() const;
  ~ASTText() override;

 protected:
  ASTText(ASTType type, const char* text);

 private:
  const char* text_;
};

}  // namespace vel
