// What the floors have in common.
#pragma once

#include <string>
#include <string_view>

#include "bench/operators/floors.h"
#include "host/ast_node_helper.h"
#include "host/call_tree.h"
#include "host/declaration.h"
#include "host/expression.h"
#include "host/project_settings.h"
#include "host/symbol.h"
#include "host/symbol_manager.h"
#include "host/text.h"

namespace floors {

using vel::ASTNode;
using vel::BasicDataType;
using vel::Generator;
using vel::Symbol;

// The parameter list, seen to be one and to be complete.
inline ASTNode* listOf(ASTNode* invocation) {
  ASTNode* list = invocation->leavesCount() > 1 ? invocation->leaf(1) : nullptr;
  if (list == nullptr || list->type() != vel::ASTType::ParameterList) return nullptr;
  for (int i = 0, count = list->leavesCount(); i < count; ++i) {
    if (list->leaf(i) == nullptr) return nullptr;
  }
  return list;
}

inline const POUDeclaration* unitOf(ASTNode* invocation) {
  return dynamic_cast<const POUDeclaration*>(ASTNode::getPouAST(invocation));
}
inline std::string scopeOf(ASTNode* invocation) { return unitOf(invocation)->name(); }

inline BasicDataType typeOf(const CheckCall& call, ASTNode* node, const std::string& scope) {
  return AstNodeHelper::dataType(call.ii, node, scope, call.messages).type;
}
// At generation: the host's messages are dropped.
inline BasicDataType typeOf(Generator* gen, ASTNode* invocation, ASTNode* node) {
  std::vector<vel::VELMessage> dropped;
  return AstNodeHelper::dataType(gen->ii, node, scopeOf(invocation), dropped).type;
}

inline vel::SymbolDataType* findType(vel::InternalInterface* ii, const std::string& name,
                                     Symbol::Type kind = Symbol::DataType) {
  return dynamic_cast<vel::SymbolDataType*>(ii->symbolManager()->symbol(name.c_str(), "", kind));
}

inline std::string writtenName(ASTNode* invocation) {
  return AstNodeHelper::astText(invocation->leaf(0));
}
inline const char* token(ASTNode* invocation) {
  return dynamic_cast<const vel::ASTText*>(invocation->leaf(0))->text();
}

inline int inputsOf(vel::InternalInterface* ii, const std::string& name) {
  const auto* unit = dynamic_cast<const vel::SymbolPOU*>(
      ii->symbolManager()->symbol(name.c_str(), "", Symbol::Pou));
  const bool isFunction = unit->type() == vel::POUType::Function;
  int inputs = 0;
  for (int i = 0, count = unit->paramsCount(); i < count; ++i) {
    const std::int32_t kind = unit->param(i)->varKind();
    inputs +=
        kind == vel::SymbolVar::kInput || (isFunction && kind == vel::SymbolVar::kInOut) ? 1 : 0;
  }
  return inputs;
}

// An empty text with room for any that a floor writes.
inline std::string room() {
  std::string text;
  text.reserve(200);
  return text;
}

}  // namespace floors
