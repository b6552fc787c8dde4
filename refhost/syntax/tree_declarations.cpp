// Nodes of types, declarations, units and configurations.
#include <array>
#include <iterator>
#include <string>

#include "hostkit/folding.h"
#include "refhost/syntax/tree_factory.h"

namespace refhost {

Value TreeFactory::namedType(Span span) {
  return finish(tree_.make<TypeSpec>(vel::ASTType::NamedTypeSpec, tree_.intern(textOf(span))), span,
                {});
}

Value TreeFactory::stringType(Span span, std::string_view typeName, Value length) {
  return finish(tree_.make<TypeSpec>(vel::ASTType::StringTypeSpec, tree_.intern(typeName)), span,
                {operand(length)});
}

Value TreeFactory::subrangeType(Span span, Span base, Value range) {
  return finish(tree_.make<TypeSpec>(vel::ASTType::SubrangeTypeSpec, tree_.intern(textOf(base))),
                span, {range});
}

Value TreeFactory::enumType(Span span, Span base, NodeList values) {
  return finish(tree_.make<TypeSpec>(vel::ASTType::EnumTypeSpec, tree_.intern(textOf(base))), span,
                items(values), values.count);
}

Value TreeFactory::enumValue(Span span, Span valueName, Value value) {
  return finish(tree_.make<Node>(NodeKind::EnumValue), span, {name(valueName), operand(value)});
}

Value TreeFactory::arrayType(Span span, NodeList dimensions, Value element) {
  return finishAll(tree_.make<TypeSpec>(vel::ASTType::ArrayTypeSpec, ""), span, element,
                   dimensions);
}

Value TreeFactory::structType(Span span, NodeList members) {
  return finish(tree_.make<TypeSpec>(vel::ASTType::StructTypeSpec, ""), span, items(members),
                members.count);
}

Value TreeFactory::pointerType(Span span, vel::ASTType kind, Value target) {
  return finish(tree_.make<TypeSpec>(kind, ""), span, {target});
}

Value TreeFactory::boundType(Span span, Value target) {
  return finish(tree_.make<TypeSpec>(astType(NodeKind::BoundTypeSpec), ""), span, {target});
}

Value TreeFactory::typeDecl(Span span, Span typeName, Value type, Value initial) {
  return finish(tree_.make<Node>(NodeKind::TypeDecl), span,
                {name(typeName), type, operand(initial)});
}

void TreeFactory::typeDeclaration(Value declaration) {
  tree_.types.push_back(static_cast<Node*>(declaration.node));
}

Value TreeFactory::arrayValue(Span span, NodeList elements) {
  return finish(tree_.make<Expr>(ExprKind::ArrayValue), span, items(elements), elements.count);
}

Value TreeFactory::structValue(Span span, NodeList fields) {
  return finish(tree_.make<Expr>(ExprKind::StructValue), span, items(fields), fields.count);
}

Value TreeFactory::repeat(Span span, Value count, NodeList elements) {
  return finishAll(tree_.make<Expr>(ExprKind::Repeat), span, count, elements);
}

// The scanner skips pragmas, so this looks for one in the text before the span.
bool TreeFactory::followsPragma(Span span, std::string_view pragma) const {
  constexpr std::string_view kSpace = " \t\r\n";
  std::string_view before = text_.substr(0, span.begin);
  const std::size_t end = before.find_last_not_of(kSpace);
  if (end == std::string_view::npos || before[end] != '}') return false;
  before.remove_suffix(before.size() - end);
  const std::size_t start = before.rfind('{');
  if (start == std::string_view::npos) return false;
  before.remove_prefix(start + 1);
  const std::size_t first = before.find_first_not_of(kSpace);
  if (first == std::string_view::npos) return false;
  return equalIgnoringCase(before.substr(first, before.find_last_not_of(kSpace) + 1 - first),
                           pragma);
}

Value TreeFactory::varDecl(Span span, NodeList names, Value address, Value type, Value initial) {
  scratch_.assign({type, operand(initial), address});
  scratch_.insert(scratch_.end(), items(names), items(names) + names.count);
  auto* declaration = tree_.make<VarDecl>();
  declaration->bitParameter = followsPragma(span, "bitparam");
  return link(declaration, span, scratch_.data(), scratch_.size());
}

Value TreeFactory::edgeDetecting(Value declaration, Edge edge) {
  static_cast<VarDecl*>(declaration.node)->edge = edge;
  return declaration;
}

Value TreeFactory::binding(Value declaration) {
  static_cast<VarDecl*>(declaration.node)->binds = true;
  return declaration;
}

Value TreeFactory::withoutValue(Value declaration) {
  static_cast<VarDecl*>(declaration.node)->valueMissing = true;
  return declaration;
}

Value TreeFactory::varBlock(Span span, Qualifiers qualifiers, NodeList declarations) {
  auto* block = tree_.make<VarBlock>();
  block->constant = qualifiers.constant;
  block->retention = qualifiers.retention;
  return link(block, span, items(declarations), declarations.count);
}

Value TreeFactory::inSection(VarSection section, Value block) {
  static_cast<VarBlock*>(block.node)->section = section;
  return block;
}

Value TreeFactory::varBlocks(Span span, NodeList blocks) {
  return listNode(NodeKind::VarBlocks, span, items(blocks), blocks.count);
}

void TreeFactory::unit(Span span, vel::POUType type, Value unitName, Value returnType, Value blocks,
                       Value body) {
  // A syntax error in the name of a unit: its name is empty.
  if (unitName.node == nullptr) {
    unitName = name({span.begin, span.begin});
    errors_.refuseDeclarations();
  }
  const char* text = static_cast<const Text*>(unitName.node)->text();
  auto* node = tree_.make<Unit>(text, type);
  node->incomplete = errors_.isIncomplete();
  const Value leaves[] = {unitName, returnType, blocks, body};
  link(node, span, leaves, std::size(leaves));
  tree_.units.push_back(node);
}

// A SETUP keeps its variables, which those of the TESTs see; the others are called like functions.
void TreeFactory::testUnit(Span span, TestPart part, Value title, Value blocks, Value body) {
  if (part == TestPart::Test && title.node != nullptr) {
    const std::string_view text = vel::TreeBuilder::source(*title.node);
    const bool isString = text.front() == '\'' || text.front() == '"';
    if (!isString || text.size() == 2) {
      errors_.syntax(spanOf(title),
                     isString ? "the name of a TEST is empty" : "the name of a TEST is a string");
      title = kNoValue;
    }
  }
  if (title.node == nullptr) title = name({span.begin, span.begin});
  while (!tree_.globals.empty()) {
    const vel::TextLocation at = tree_.globals.back()->pos();
    if (at.file() != title.node->pos().file() || at.offset() < span.begin) break;
    errors_.notSupported({at.offset(), at.offset()}, "Global variables (VAR_GLOBAL) of tests are");
    errors_.refusePart();
    tree_.globals.pop_back();
  }
  const bool setup = part == TestPart::Setup;
  const char* const word = setup ? "SETUP" : part == TestPart::Test ? "TEST" : "TEARDOWN";
  const std::string numbered = word + ('#' + std::to_string(tree_.tests.size()));
  auto* node = tree_.make<Unit>(tree_.intern(numbered),
                                setup ? vel::POUType::Program : vel::POUType::Function);
  node->incomplete = errors_.isIncomplete();
  node->testPart = part;
  const Value leaves[] = {title, kNoValue, blocks, body};
  link(node, span, leaves, std::size(leaves));
  tree_.tests.push_back(node);
}

void TreeFactory::configured(Value block) {
  tree_.configured.push_back(static_cast<VarBlock*>(block.node));
}

void TreeFactory::globals(Value block) {
  tree_.globals.push_back(static_cast<VarBlock*>(inSection(VarSection::Global, block).node));
}

// --- Configurations ---

void TreeFactory::beginConfiguration(Value configurationName) {
  configuration_ = static_cast<const Text*>(configurationName.node);
  resource_ = nullptr;
}

void TreeFactory::beginResource(Value resourceName) {
  resource_ = static_cast<const Text*>(resourceName.node);
  if (resource_ != nullptr) tree_.resources.push_back(resource_);
}

void TreeFactory::endResource(Span span) {
  if (resource_ != nullptr) {
    tree_.configurations.push_back({resource_, configuration_, true, errors_.rangeOf(span)});
  }
  resource_ = nullptr;
}

void TreeFactory::endConfiguration(Span span) {
  if (configuration_ == nullptr) return;
  tree_.configurations.push_back({configuration_, nullptr, false, errors_.rangeOf(span)});
}

ConfigurationItem* TreeFactory::configurationItem(NodeKind kind) {
  auto* node = tree_.make<ConfigurationItem>(kind);
  node->configuration = configuration_;
  node->resource = resource_;
  return node;
}

void TreeFactory::task(Span span, Span taskName, Span parameters, NodeList arguments) {
  const Value properties = call(span, name(taskName), parameters, arguments);
  ConfigurationItem* const node = configurationItem(NodeKind::Task);
  link(node, span, std::array{name(taskName), properties}.data(), 2);
  tree_.tasks.push_back(node);
}

void TreeFactory::programInstance(Span span, Qualifiers qualifiers, Span instanceName, Value task,
                                  Span program, Span parameters, NodeList arguments) {
  const Value connections =
      call({program.begin, parameters.end}, name(program), parameters, arguments);
  ConfigurationItem* const node = configurationItem(NodeKind::ProgramInstance);
  node->retention = qualifiers.retention;
  link(node, span, std::array{name(instanceName), connections, task}.data(), 3);
  tree_.instances.push_back(node);
}

// --- Statements ---

}  // namespace refhost
