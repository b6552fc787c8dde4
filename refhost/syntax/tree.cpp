#include "refhost/syntax/tree.h"

#include <algorithm>
#include <cstring>

#include "refhost/syntax/large_blocks.h"

namespace refhost {

namespace {
constexpr std::size_t kFirstBlock = std::size_t{64} * 1024;
}

Literal::Literal(const LiteralValue& literal)
    : ::ConstantValue(literal.type, literal.typeName, literal.fixedType), value(literal) {}

Tree::Tree() : arena_(kFirstBlock, largeBlocks()) {}

void Tree::setLeaves(ASTNode& node, const std::vector<ASTNode*>& leaves) {
  ASTNode** copy = allocateLeaves(leaves.size());
  std::copy(leaves.begin(), leaves.end(), copy);
  vel::TreeBuilder::setLeaves(node, copy, static_cast<std::int32_t>(leaves.size()));
}

void Tree::setLeaves(ASTNode& node, std::initializer_list<ASTNode*> leaves) {
  ASTNode** copy = allocateLeaves(leaves.size());
  std::copy(leaves.begin(), leaves.end(), copy);
  vel::TreeBuilder::setLeaves(node, copy, static_cast<std::int32_t>(leaves.size()));
}

const char* Tree::intern(std::string_view text) {
  if (const auto known = names_.find(text); known != names_.end()) return known->data();
  auto* copy = static_cast<char*>(arena_.allocate(text.size() + 1, 1));
  if (!text.empty()) std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = '\0';
  names_.emplace(copy, text.size());
  return copy;
}

Expr* Tree::makeBinary(ExprKind kind, ASTNode* left, ASTNode* right) {
  Expr* const expr = make<Expr>(kind);
  setLeaves(*expr, {left, right});
  expr->chain = isBinary(*left) ? static_cast<const Expr*>(left)->chain + 1 : 1;
  return expr;
}

const LiteralValue& Tree::keep(LiteralValue value) {
  return literals_.emplace_back(std::move(value));
}

ASTNode** Tree::allocateLeaves(std::size_t count) {
  if (count == 0) return nullptr;
  return static_cast<ASTNode**>(arena_.allocate(count * sizeof(ASTNode*), alignof(ASTNode*)));
}

bool isOpenArraySpec(const ASTNode& spec) {
  if (spec.type() != vel::ASTType::ArrayTypeSpec) return false;
  for (int i = 1; i < spec.leavesCount(); ++i) {
    if (spec.leaf(i)->leavesCount() == 0) return true;
  }
  return false;
}

}  // namespace refhost
