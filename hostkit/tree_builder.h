// Sets the data of nodes. Hosts construct nodes as classes derived from those of host/ast.h,
// host/expression.h and host/declaration.h.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/expression.h"

namespace vel {

// The only class with write access to the data of nodes.
class TreeBuilder {
 public:
  // `start` is the position of `source`, which is not copied and must outlive the node.
  static void setSpan(ASTNode& node, TextLocation start, std::string_view source) {
    node.pos_ = start;
    node.source_ = source.data();
    node.length_ = static_cast<std::uint32_t>(source.size()) & 0x7FFFFFFFU;
  }
  // `leaves` is not copied and must outlive the node. Sets the parent of each leaf that is not
  // null.
  static void setLeaves(ASTNode& node, ASTNode** leaves, std::int32_t count) {
    node.leaves_ = leaves;
    node.leavesCount_ = count;
    for (std::int32_t i = 0; i < count; ++i) {
      if (leaves[i] != nullptr) leaves[i]->parent_ = &node;
    }
  }
  static void setLeaf(ASTNode& node, int index, ASTNode* leaf) {
    node.leaves_[index] = leaf;
    if (leaf != nullptr) leaf->parent_ = &node;
  }
  static void setBitAccessOffset(::Expression& node, std::int32_t bit) {
    node.bitAccessOffset_ = bit;
  }
  // The source text of a node, not copied.
  static std::string_view source(const ASTNode& node) { return {node.source_, node.length_}; }
};

}  // namespace vel
