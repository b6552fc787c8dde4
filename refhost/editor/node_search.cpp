#include "refhost/editor/node_search.h"

#include <algorithm>

namespace refhost {

namespace {

bool containsRange(const SourceRange& outer, const SourceRange& inner) {
  const std::uint64_t begin = outer.begin.offset();
  const std::uint64_t at = inner.begin.offset();
  return outer.begin.file() == inner.begin.file() && at >= begin &&
         at + inner.length <= begin + outer.length;
}

bool isSameRange(const SourceRange& a, const SourceRange& b) {
  return a.length == b.length && containsRange(a, b);
}

// The leaf, or what the analysis has taken out of the leaves of a call, that containsRange the
// range.
const ASTNode* partWith(const ASTNode& node, const SourceRange& range) {
  for (int i = 0; i < node.leavesCount(); ++i) {
    const ASTNode* const leaf = node.leaf(i);
    if (leaf != nullptr && containsRange(rangeOf(*leaf), range)) return leaf;
  }
  if (kindOf(node) != NodeKind::Invocation) return nullptr;
  const auto& call = static_cast<const Call&>(node);
  for (const Argument* const part : {call.enable, call.enabled}) {
    if (part != nullptr && containsRange(rangeOf(*part), range)) return part;
  }
  return nullptr;
}

const Unit* unitIn(const std::vector<Unit*>& units, const SourceRange& range) {
  const auto found = std::find_if(units.begin(), units.end(), [&range](const Unit* unit) {
    return containsRange(rangeOf(*unit), range);
  });
  return found != units.end() ? *found : nullptr;
}

}  // namespace

const Unit* unitAround(const Tree& tree, vel::TextLocation place) {
  const Unit* const unit = unitIn(tree.units, {place, 0});
  return unit != nullptr ? unit : unitIn(tree.tests, {place, 0});
}

const ASTNode* nodeWith(const Tree& tree, const SourceRange& range) {
  const ASTNode* node = unitAround(tree, range.begin);
  while (node != nullptr && !isSameRange(rangeOf(*node), range)) {
    if (statementKindOf(*node) == StatementKind::Assignment) {
      if (isSameRange(static_cast<const Assignment*>(node)->sourceRange, range))
        return node->leaf(1);
    }
    node = partWith(*node, range);
  }
  return node;
}

const Call* callIn(const ASTNode* node) {
  if (node == nullptr) return nullptr;
  if (node->type() == vel::ASTType::Expression) {
    if (static_cast<const Expr*>(node)->kind != ExprKind::Call) return nullptr;
    node = node->leaf(0);
  }
  return kindOf(*node) == NodeKind::Invocation ? static_cast<const Call*>(node) : nullptr;
}

const vel::SymbolDataType* dataTypeOf(const ASTNode& value) {
  if (value.type() == vel::ASTType::Expression) return static_cast<const Expr&>(value).dataType;
  const Call* const call = callIn(&value);
  return call != nullptr ? call->dataType : nullptr;
}

}  // namespace refhost
