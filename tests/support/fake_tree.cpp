#include "support/fake_tree.h"

#include <cctype>

#include "support/fake_host.h"

namespace vel {
namespace {

// The constructors of nodes are the host's own.
template <class Node>
struct Made : Node {
  template <class... Arguments>
  explicit Made(Arguments... arguments) : Node(arguments...) {}
};

constexpr ASTType kOtherKind{7};

Expression::Operator operatorOf(const std::string& text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (std::isdigit(first) != 0 || text[0] == '-' || text[0] == '\'') return Expression::Constant;
  if (text[0] == '=' || text.find('#') != std::string::npos) return Expression::Constant;
  if (text == "TRUE" || text == "FALSE") return Expression::Constant;
  if (text.find('.') != std::string::npos) return Expression::Typed;
  return text.find(' ') == std::string::npos ? Expression::Variable : Expression::Operator{5};
}

}  // namespace

TreeBuilder::~TreeBuilder() = default;

std::string TreeBuilder::text(const ASTNode* node) {
  return node != nullptr ? std::string(node->source_, node->length_) : std::string();
}

template <class Node>
Node* TreeBuilder::add(std::unique_ptr<Node> made, const std::vector<ASTNode*>& leaves,
                       const std::string& text, std::size_t offset) {
  Node* node = made.get();
  nodes_.push_back(std::move(made));
  std::vector<ASTNode*>& kept = leaves_.emplace_back(leaves);
  node->ASTNode::leavesCount_ = static_cast<int>(kept.size());
  node->ASTNode::leaves_ = kept.data();
  node->ASTNode::source_ = texts_.emplace_back(text).c_str();
  node->ASTNode::length_ = static_cast<std::uint32_t>(text.size());
  node->ASTNode::pos_ = TextLocation(1, static_cast<std::uint32_t>(offset));
  for (ASTNode* leaf : leaves) {
    if (leaf != nullptr) leaf->parent_ = node;
  }
  return node;
}

ASTNode* TreeBuilder::node(ASTType type, const std::vector<ASTNode*>& leaves,
                           const std::string& text, std::size_t offset) {
  return add(std::make_unique<Made<ASTNode>>(type), leaves, text, offset);
}

Expression* TreeBuilder::expression(Expression::Operator op, const std::vector<ASTNode*>& leaves,
                                    const std::string& text, std::size_t offset) {
  Expression* made = add(std::make_unique<Made<Expression>>(op), leaves, text, offset);
  made->setBasicType(FakeHost::typeOf(text).type);
  return made;
}

ASTNode* TreeBuilder::parameter(const std::string& text, std::size_t offset) {
  if (text.empty()) return nullptr;
  if (text.back() == ')') return invocation(text, offset);
  const Expression::Operator op = operatorOf(text);
  if (op != Expression::Constant) {
    Expression* made = expression(op, {}, text, offset);
    const std::size_t dot = text.find('.');
    if (op == Expression::Typed && std::isdigit(static_cast<unsigned char>(text[dot + 1])) != 0) {
      made->bitAccessOffset_ = text[dot + 1] - '0';
    }
    return made;
  }
  const bool bare = text[0] == '=';
  const std::string literal = text.substr(bare ? 1 : 0);
  const DataTypeInfo info = FakeHost::typeOf(literal);
  const bool fixed = literal.find('#') != std::string::npos;
  ASTNode* value = add(std::make_unique<Made<ConstantValue>>(
                           info.type, texts_.emplace_back(info.name).c_str(), fixed),
                       {}, literal, offset);
  return bare ? value : expression(op, {value}, text, offset);
}

Invocation* TreeBuilder::invocation(const std::string& text, std::size_t offset) {
  const std::size_t open = text.find_first_of("({?[");
  const std::string& name = texts_.emplace_back(text.substr(0, open));
  std::vector<ASTNode*> leaves = {nullptr};
  if (!name.empty()) {
    leaves[0] = add(std::make_unique<Made<ASTText>>(ASTType{2}, name.c_str()), {}, name, offset);
  }
  if (open != std::string::npos && text[open] == '?') {
    leaves.push_back(nullptr);
  } else if (open != std::string::npos) {
    const std::string list = text.substr(open + 1, text.size() - open - 2);
    std::vector<ASTNode*> parameters;
    for (std::size_t at = 0; !list.empty() && at <= list.size();) {
      const std::size_t begin = std::min(list.find_first_not_of(' ', at), list.size());
      const std::size_t end = std::min(list.find(',', at), list.size());
      parameters.push_back(
          parameter(begin < end ? list.substr(begin, end - begin) : "", offset + open + 1 + begin));
      at = end + 1;
    }
    const ASTType kind = text[open] == '('   ? ASTType::ParameterList
                         : text[open] == '[' ? ASTType::NamedTypeSpec
                                             : kOtherKind;
    leaves.push_back(node(kind, parameters, list, offset + open));
  }
  return add(std::make_unique<Made<Invocation>>(ASTType{3}), leaves, text, offset);
}

Invocation* TreeBuilder::parse(const std::string& source, const char* unit, POUType unitType) {
  const std::size_t assign = source.find(" := ");
  const bool assigned = assign != std::string::npos;
  const std::size_t begin = assigned ? assign + 4 : 0;
  Invocation* made = invocation(source.substr(begin), begin);
  ASTNode* statement = made;
  if (assigned) {
    statement = node(kOtherKind, {parameter(source.substr(0, assign), 0), made}, source);
  }
  // The unit stands above a node of a single leaf, which is no assignment.
  add(std::make_unique<Made<POUDeclaration>>(kOtherKind, unit, unitType),
      {node(kOtherKind, {statement})}, "", 0);
  return made;
}

}  // namespace vel
