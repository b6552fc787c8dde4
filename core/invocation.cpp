#include "core/invocation.h"

#include <algorithm>

#include "host/ast_node_helper.h"
#include "host/expression.h"
#include "host/internal_interface.h"
#include "host/symbol_manager.h"

namespace vel {

bool isEmpty(const ASTNode* invocation) {
  return invocation == nullptr || invocation->leavesCount() == 0;
}

ASTNode* leafOf(const ASTNode* node, int i) {
  return node != nullptr && i < node->leavesCount() ? node->leaf(i) : nullptr;
}

std::string textOf(ASTNode* node) {
  return node != nullptr ? AstNodeHelper::astText(node) : std::string();
}

TextLocation positionOf(const ASTNode* node) {
  return node != nullptr ? node->pos() : TextLocation();
}

std::string operatorText(const ASTNode* invocation) { return textOf(leafOf(invocation, 0)); }

std::optional<std::string> nameToken(const ASTNode* invocation) {
  const auto* token = dynamic_cast<const ASTText*>(leafOf(invocation, 0));
  const char* text = token != nullptr ? token->text() : nullptr;
  if (text == nullptr) return std::nullopt;
  return text;
}

bool hasParameterList(const ASTNode& invocation) {
  const ASTNode* list = leafOf(&invocation, 1);
  return list != nullptr && list->type() == ASTType::ParameterList;
}

ASTNode* argumentList(const ASTNode* invocation, int readCount) {
  ASTNode* list = leafOf(invocation, 1);
  return list != nullptr && hasLeaves(*list, readCount) ? list : nullptr;
}

bool hasLeaves(const ASTNode& list, int count) {
  const int there = std::min(count, list.leavesCount());
  for (int i = 0; i < there; ++i) {
    if (list.leaf(i) == nullptr) return false;
  }
  return true;
}

bool isAssigned(const ASTNode& invocation) {
  const ASTNode* parent = invocation.parent();
  return parent != nullptr && parent->leavesCount() > 1;
}

const POUDeclaration* enclosingPou(ASTNode* invocation) {
  if (invocation == nullptr) return nullptr;
  return dynamic_cast<const POUDeclaration*>(ASTNode::getPouAST(invocation));
}

bool isKeptInDeviceMemory(const POUDeclaration& unit) { return unit.kind == 1; }

std::string nameOf(const POUDeclaration* unit) {
  const char* name = unit != nullptr ? unit->name() : nullptr;
  return name != nullptr ? name : std::string();
}

std::string enclosingPouName(ASTNode* invocation) { return nameOf(enclosingPou(invocation)); }

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
