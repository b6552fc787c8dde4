#include "core/invocation.h"

#include "host/ast_node_helper.h"
#include "host/expression.h"
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

const POUDeclaration* enclosingPou(ASTNode* invocation) {
  return dynamic_cast<const POUDeclaration*>(ASTNode::getPouAST(invocation));
}

bool isKeptInDeviceMemory(const POUDeclaration& unit) { return unit.kind == 1; }

std::string enclosingPouName(ASTNode* invocation) {
  const POUDeclaration* unit = enclosingPou(invocation);
  return unit != nullptr ? unit->name() : std::string();
}

std::string effectivePouName(ASTNode* invocation, const std::string& fallback) {
  std::string name = enclosingPouName(invocation);
  if (name.empty()) name = fallback;
  return name;
}

BasicDataType recordedType(const ASTNode* node, BasicDataType otherwise) {
  if (const auto* expression = dynamic_cast<const Expression*>(node)) {
    return expression->basicType();
  }
  const auto* call = dynamic_cast<const Invocation*>(node);
  return call != nullptr ? call->basicType() : otherwise;
}

SymbolDataType* findDataType(InternalInterface* ii, const char* name) {
  return dynamic_cast<SymbolDataType*>(ii->symbolManager()->symbol(name, "", Symbol::DataType));
}

}  // namespace vel
