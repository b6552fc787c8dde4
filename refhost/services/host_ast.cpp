// Operations of the syntax tree's nodes.
#include "host/ast.h"
#include "host/expression.h"
#include "refhost/syntax/tree.h"

namespace vel {

ASTNode::ASTNode(ASTType type) : type_(type) {}
ASTNode::~ASTNode() = default;
ASTType ASTNode::type() const { return type_; }
int ASTNode::leavesCount() const { return leavesCount_; }
ASTNode* ASTNode::leaf(int i) const { return i >= 0 && i < leavesCount_ ? leaves_[i] : nullptr; }
ASTNode* ASTNode::parent() const { return parent_; }
TextLocation ASTNode::pos() const { return pos_; }

ASTNode* ASTNode::getPouAST(ASTNode* node) {
  while (node != nullptr && refhost::kindOf(*node) != refhost::NodeKind::Unit) {
    node = node->parent();
  }
  return node;
}

ASTText::ASTText(ASTType type, const char* text) : ASTNode(type), text_(text) {}
ASTText::~ASTText() = default;
const char* ASTText::text() const { return text_; }

BasicData::BasicData(BasicDataType type) : type_(type) {}
BasicDataType BasicData::type() const { return type_; }

}  // namespace vel
