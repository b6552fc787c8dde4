#include "refhost/syntax/parsed.h"

#include <utility>

using refhost::ASTNode;
using refhost::Expr;
using refhost::ExprKind;
using refhost::kindOf;
using refhost::NodeKind;

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
  for (const auto* type : tree.types) text += show(type) + "\n";
  for (const auto* unit : tree.units) text += show(unit) + "\n";
  return text;
}

std::string Parsed::statements() const {
  std::string text;
  if (tree.units.empty()) return text;
  const ASTNode& body = *tree.units[0]->leaf(refhost::Unit::kBody);
  for (int i = 0; i < body.leavesCount(); ++i) text += show(body.leaf(i)) + "\n";
  return text;
}

namespace {

std::string sourceOf(const ASTNode& node) { return std::string(vel::TreeBuilder::source(node)); }

std::string leaves(const ASTNode& node, int first = 0) {
  std::string text;
  for (int i = first; i < node.leavesCount(); ++i) {
    text += (i == first ? "" : " ") + show(node.leaf(i));
  }
  return text;
}

std::string list(const std::string& head, const ASTNode& node) {
  const std::string items = leaves(node);
  return "(" + head + (items.empty() ? "" : " ") + items + ")";
}

std::string showExpression(const Expr& expr) {
  if (expr.kind == ExprKind::Part) {
    const std::string bits = expr.partBits == 1 ? "bit" : "bits:" + std::to_string(expr.partBits);
    return list(bits + " " + std::to_string(expr.bitAccessOffset()), expr);
  }
  if (expr.kind == ExprKind::Literal) return sourceOf(*expr.leaf(0));
  if (expr.kind == ExprKind::Variable) return sourceOf(expr);
  if (expr.kind == ExprKind::Call) return "{" + leaves(expr) + "}";
  constexpr const char* kNames[] = {
      "",   "",    ".",   "[]", "^",        "",        "",      "neg",    "not",   "**",
      "*",  "/",   "mod", "+",  "-",        "<",       ">",     "<=",     ">=",    "=",
      "<>", "and", "xor", "or", "and_then", "or_else", "array", "repeat", "struct"};
  return list(kNames[static_cast<std::size_t>(expr.kind)], expr);
}

std::string showUnit(const refhost::Unit& unit) {
  constexpr const char* kKinds[] = {"", "program", "function", "function_block"};
  return list(kKinds[static_cast<int>(unit.POUDeclaration::type())], unit);
}

std::string showBlock(const refhost::VarBlock& block) {
  constexpr const char* kSections[] = {"var", "input", "output", "in_out", "temp"};
  return list(std::string(kSections[static_cast<int>(block.section)]) +
                  (block.constant ? " constant" : "") +
                  (block.retention == refhost::Retention::Retain ? " retain" : ""),
              block);
}

}  // namespace

std::string show(const ASTNode* node) {
  if (node == nullptr) return "_";
  switch (node->type()) {
    case vel::ASTType::Expression:
      return showExpression(static_cast<const Expr&>(*node));
    case vel::ASTType::StringTypeSpec:
      return static_cast<const refhost::TypeSpec*>(node)->name + ("<" + leaves(*node) + ">");
    case vel::ASTType::NamedTypeSpec:
      return static_cast<const refhost::TypeSpec*>(node)->name;
    case vel::ASTType::SubrangeTypeSpec:
    case vel::ASTType::EnumTypeSpec:
      return list(std::string("of ") + static_cast<const refhost::TypeSpec*>(node)->name, *node);
    case vel::ASTType::ArrayTypeSpec:
      return list("array", *node);
    case vel::ASTType::StructTypeSpec:
      return list("struct", *node);
    case vel::ASTType::PointerTypeSpec:
    case vel::ASTType::ReferenceTypeSpec:
      return list("pointer", *node);
    default:
      break;
  }
  switch (kindOf(*node)) {
    case NodeKind::BoundTypeSpec:
      return list("reference", *node);
    case NodeKind::Text:
      return static_cast<const refhost::Text*>(node)->text();
    case NodeKind::Invocation:
      return show(node->leaf(0)) + "[" + leaves(*node->leaf(1)) + "]";
    case NodeKind::Argument: {
      const auto& argument = static_cast<const refhost::Argument&>(*node);
      return (argument.negated ? "not " : "") + show(node->leaf(0)) +
             (argument.output ? "=>" : ":=") + show(node->leaf(1));
    }
    case NodeKind::StatementList:
    case NodeKind::VarBlocks:
      return "[" + leaves(*node) + "]";
    case NodeKind::Unit:
      return showUnit(static_cast<const refhost::Unit&>(*node));
    case NodeKind::VarBlock:
      return showBlock(static_cast<const refhost::VarBlock&>(*node));
    default: {
      constexpr const char* kNames[] = {"decl", "", "", "", "of", "labels", "..", "type", "value"};
      constexpr const char* kStatements[] = {":=",    "REF=",   "call", "if",       "case",  "for",
                                             "while", "repeat", "exit", "continue", "return"};
      static_assert(std::size(kStatements) ==
                    static_cast<std::size_t>(refhost::StatementKind::Return) -
                        static_cast<std::size_t>(refhost::StatementKind::Assignment) + 1);
      const int statement =
          static_cast<int>(node->type()) - static_cast<int>(refhost::StatementKind::Assignment);
      if (statement >= 0) return list(kStatements[statement], *node);
      const int index = static_cast<int>(node->type()) - static_cast<int>(NodeKind::VarDecl);
      return index >= 0 ? list(kNames[index], *node) : "?";
    }
  }
}
