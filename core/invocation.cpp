#include "core/invocation.h"

#include "host/ast_node_helper.h"
#include "host/declaration.h"
#include "host/internal_interface.h"
#include "host/symbol_manager.h"

namespace vel {

ASTNode* leafOf(const ASTNode* node, int i) {
  return node != nullptr && i < node->leavesCount() ? node->leaf(i) : nullptr;
}

TextLocation positionOf(const ASTNode* node) {
  return node != nullptr ? node->pos() : TextLocation();
}

std::string operatorText(const ASTNode* invocation) {
  return AstNodeHelper::astText(leafOf(invocation, 0));
}

const char* nameToken(const ASTNode* invocation) {
  const auto* token = dynamic_cast<const ASTText*>(leafOf(invocation, 0));
  return token != nullptr ? token->text() : nullptr;
}

ASTNode* argumentList(const ASTNode* invocation) {
  ASTNode* list = leafOf(invocation, 1);
  return list != nullptr && isComplete(*list) ? list : nullptr;
}

bool isComplete(const ASTNode& list) {
  const int count = list.leavesCount();
  for (int i = 0; i < count; ++i) {
    if (list.leaf(i) == nullptr) return false;
  }
  return true;
}

bool isAssigned(const ASTNode& invocation) {
  const ASTNode* parent = invocation.parent();
  return parent != nullptr && parent->leavesCount() > 1;
}

std::string enclosingPouName(ASTNode* invocation) {
  const auto* unit = dynamic_cast<const POUDeclaration*>(ASTNode::getPouAST(invocation));
  return unit != nullptr ? unit->name() : std::string();
}

std::string effectivePouName(ASTNode* invocation, const std::string& fallback) {
  std::string name = enclosingPouName(invocation);
  return name.empty() ? fallback : name;
}

SymbolDataType* findDataType(InternalInterface* ii, const char* name) {
  return dynamic_cast<SymbolDataType*>(ii->symbolManager()->symbol(name, "", Symbol::DataType));
}

}  // namespace vel
