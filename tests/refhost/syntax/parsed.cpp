#include "refhost/syntax/parsed.h"

#include <utility>

using refhost::ASTNode;
using refhost::kindOf;
using refhost::NodeKind;

namespace {

bool isList(const ASTNode& node) {
  const NodeKind kind = kindOf(node);
  return kind == NodeKind::StatementList || kind == NodeKind::VarBlocks ||
         kind == NodeKind::VarBlock || node.type() == vel::ASTType::StructTypeSpec ||
         node.type() == refhost::astType(refhost::StatementKind::Case);
}

}  // namespace

Parsed::Parsed(std::string source) {
  sources.add("test.st", std::move(source));
  refhost::Diagnostics found;
  refhost::parse(sources, 0, tree, found);
  messages = found.inOrder(0);
}

std::string Parsed::errors() const {
  std::string text;
  for (const auto& message : messages) {
    const auto [line, column] = sources.position(message.range.begin);
    text += std::to_string(line) + ":" + std::to_string(column) + " " + message.text + "\n";
  }
  return text;
}

std::string Parsed::units() const {
  std::string text;
  for (const auto* type : tree.types) text += show(*type) + "\n";
  for (const auto* unit : tree.units) text += show(*unit) + "\n";
  return text;
}

std::string Parsed::statements() const {
  std::string text;
  if (tree.units.empty()) return text;
  const ASTNode& body = *tree.units[0]->leaf(refhost::Unit::kBody);
  for (int i = 0; i < body.leavesCount(); ++i) text += show(*body.leaf(i)) + "\n";
  return text;
}

std::string show(const ASTNode& node) {
  const std::string source(vel::TreeBuilder::source(node));
  const bool list = isList(node);
  std::string shown;
  for (int i = 0; i < node.leavesCount(); ++i) {
    const ASTNode* const leaf = node.leaf(i);
    if (list) {
      shown += (i > 0 ? "; " : "") + show(*leaf);
    } else if (leaf != nullptr && isList(*leaf)) {
      shown += show(*leaf);
    }
  }
  if (list) return "[" + shown + "]";
  if (shown.empty()) return source;
  const bool named = kindOf(node) == NodeKind::Unit || kindOf(node) == NodeKind::CaseElement;
  return (named ? show(*node.leaf(0)) : source.substr(0, source.find_first_of(" :\n;"))) + shown;
}
