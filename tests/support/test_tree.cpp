#include "support/test_tree.h"

#include <algorithm>
#include <cctype>

#include "hostkit/literal.h"
#include "support/test_host.h"

using vel::ASTNode;
using vel::ASTType;

namespace {

hostkit::Tree::Span span(const std::string& text, std::size_t offset) {
  return {text, vel::TextLocation(1, static_cast<std::uint32_t>(offset))};
}

bool isLiteral(const std::string& text) {
  hostkit::LiteralValue value;
  return hostkit::parseLiteral(text, value) == hostkit::LiteralError::None && text != "true";
}

ASTType listKind(char bracket) {
  if (bracket == '(') return ASTType::ParameterList;
  return bracket == '[' ? ASTType::NamedTypeSpec : hostkit::kStatementNode;
}

}  // namespace

std::string TestTree::text(const ASTNode* node) {
  return node != nullptr ? std::string(vel::TreeBuilder::source(*node)) : std::string();
}

ASTNode* TestTree::node(ASTType type, Leaves leaves, const std::string& text, std::size_t offset) {
  return make<ASTNode>(span(text, offset), std::move(leaves), type);
}

ASTNode* TestTree::parameter(const std::string& text, std::size_t offset) {
  if (text.empty()) return nullptr;
  if (text.back() == ')') return call(text, offset);
  const bool bare = text[0] == '=';
  const std::string source = text.substr(bare ? 1 : 0);
  const DataTypeInfo type = TestHost::typeOf(source);
  const bool fixed = source.find('#') != std::string::npos;
  if (bare) {
    return make<ConstantValue>(span(source, offset), {}, type.type, keep(type.name), fixed);
  }
  if (isLiteral(source)) return literal(span(source, offset), type.type, type.name, fixed);

  const std::size_t dot = source.find('.');
  const bool isPart = dot != std::string::npos;
  const bool isSum = source.find(' ') != std::string::npos;
  Expression* const made = expression(span(source, offset), isPart  ? Expression::Typed
                                                            : isSum ? Expression::Operator{5}
                                                                    : Expression::Variable);
  made->setBasicType(type.type);
  if (isPart && std::isdigit(static_cast<unsigned char>(source[dot + 1])) != 0) {
    vel::TreeBuilder::setBitAccessOffset(*made, source[dot + 1] - '0');
  }
  return made;
}

Invocation* TestTree::call(const std::string& text, std::size_t offset) {
  const std::size_t open = text.find_first_of("({?[");
  const std::string name = text.substr(0, open);
  Leaves leaves = {name.empty() ? nullptr : word(span(name, offset))};
  if (open != std::string::npos && text[open] == '?') {
    leaves.push_back(nullptr);
  } else if (open != std::string::npos) {
    const std::string list = text.substr(open + 1, text.size() - open - 2);
    Leaves parameters;
    for (std::size_t at = 0; !list.empty() && at <= list.size();) {
      const std::size_t begin = std::min(list.find_first_not_of(' ', at), list.size());
      const std::size_t end = std::min(list.find(',', at), list.size());
      parameters.push_back(
          parameter(begin < end ? list.substr(begin, end - begin) : "", offset + open + 1 + begin));
      at = end + 1;
    }
    leaves.push_back(node(listKind(text[open]), std::move(parameters), list, offset + open));
  }
  return make<Invocation>(span(text, offset), std::move(leaves), hostkit::kInvocationNode);
}

Invocation* TestTree::parse(const std::string& source, const char* unit, vel::POUType unitType) {
  const std::size_t assign = source.find(" := ");
  const bool assigned = assign != std::string::npos;
  const std::size_t begin = assigned ? assign + 4 : 0;
  Invocation* const made = call(source.substr(begin), begin);
  ASTNode* statement = made;
  if (assigned) {
    statement =
        node(hostkit::kStatementNode, {parameter(source.substr(0, assign), 0), made}, source);
  }
  // The unit stands above a node of a single leaf, which is no assignment.
  make<POUDeclaration>({}, {node(hostkit::kStatementNode, {statement})}, hostkit::kUnitNode,
                       unit != nullptr ? keep(unit) : nullptr, unitType);
  return made;
}
