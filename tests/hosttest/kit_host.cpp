#include "tests/hosttest/kit_host.h"

#include <iostream>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "host/text.h"
#include "hostkit/elementary_types.h"
#include "hostkit/operator_inputs.h"
#include "hostkit/unit.h"

using hosttest::Section;
using vel::ASTNode;
using vel::BasicDataType;
using vel::Symbol;

namespace {

// What an edge detection remembers, in a byte of device memory.
class EdgeState final : public vel::SymbolVar {
 public:
  EdgeState(const std::string& name, vel::SymbolDataType* type, vel::HeapRawAddr place)
      : SymbolVar(name, type, 0) {
    backendAddress_ = place;
  }
};

std::string_view trimmed(std::string_view text, std::size_t& offset) {
  const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
  offset += first;
  text.remove_prefix(first);
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace

bool KitHost::start() {
  std::string error;
  if (!library_.load(VELOPS_PLUGIN, &services_, error)) {
    std::cerr << error << '\n';
    return false;
  }
  services_.operators = library_.registry();
  hostkit::declareFunctionOperators(services_);
  return true;
}

ASTNode* KitHost::parse(const std::vector<hosttest::Unit>& units, const std::string& statement) {
  tree_ = std::make_unique<hostkit::Tree>();
  program_ = std::make_unique<hostkit::SymbolTable>();
  constants_.clear();
  results_.clear();
  within_.clear();
  for (const hosttest::Unit& unit : units) declare(unit);
  unit_ = units.front().name;
  const std::size_t assign = statement.find(":=");
  std::size_t offset = assign != std::string::npos ? assign + 2 : 0;
  const std::string_view source = trimmed(std::string_view(statement).substr(offset), offset);
  Invocation* const invocation = call(source, offset);
  hostkit::Tree::Leaves leaves{invocation};
  if (assign != std::string::npos) {
    std::size_t at = 0;
    leaves.insert(leaves.begin(),
                  expression(trimmed(std::string_view(statement).substr(0, assign), at), at));
  }
  auto* const body = tree_->make<ASTNode>(span(statement, 0), leaves, hostkit::kStatementNode);
  tree_->unit(unit_, units.front().type, {body});
  // Operators look for the unit around a call.
  for (Invocation* const within : within_) {
    vel::STOperator* const op =
        services_.operators->findOperator(AstNodeHelper::astText(within->leaf(0)));
    std::vector<vel::VELMessage> messages;
    std::string resultType;
    if (op != nullptr && op->check(&services_, within, messages, resultType, unit_)) {
      accepted(*within, resultType);
    }
  }
  return invocation;
}

void KitHost::declare(const hosttest::Unit& unit) {
  auto symbol = std::make_unique<hostkit::Unit>(&services_, unit.name, unit.type);
  for (const auto& [name, typeName, section] : unit.variables) {
    auto variable =
        std::make_unique<vel::SymbolVar>(name, type(typeName), static_cast<std::int32_t>(section));
    if (section == Section::Constant) constants_.insert(name);
    if (section != Section::Local && section != Section::Constant) {
      symbol->addParameter(
          std::make_unique<vel::SymbolVar>(name, type(typeName), variable->varKind()));
    }
    program_->addVariable(unit.name, std::move(variable));
  }
  program_->addUnit(symbol.release());
}

Invocation* KitHost::call(std::string_view source, std::size_t offset) {
  const std::size_t open = source.find('(');
  hostkit::Tree::Leaves parameters;
  std::size_t start = open + 1;
  int depth = 0;
  for (std::size_t i = open; i < source.size(); ++i) {
    if (source[i] == '(') ++depth;
    if (source[i] == ')') --depth;
    if ((source[i] == ',' && depth == 1) || depth == 0) {
      std::size_t at = offset + start;
      const std::string_view text = trimmed(source.substr(start, i - start), at);
      parameters.push_back(expression(text, at));
      start = i + 1;
    }
    if (depth == 0) break;
  }
  vel::ASTText* const name = tree_->word(span(source.substr(0, open), offset));
  if (parameters.front()->type() == vel::ASTType::StringTypeSpec) {
    return tree_->make<Invocation>(span(source, offset), {name, parameters.front()},
                                   hostkit::kInvocationNode);
  }
  return tree_->invocation(span(source, offset), name, span(source.substr(open), offset + open),
                           parameters);
}

ASTNode* KitHost::expression(std::string_view source, std::size_t offset) {
  const Span where = span(source, offset);
  hostkit::LiteralValue value;
  if (hostkit::parseLiteral(source, value) == hostkit::LiteralError::None) {
    return literal(where, value);
  }
  if (!source.empty() && source.back() == ')') {
    Invocation* const within = call(source, offset);
    within_.push_back(within);
    return nested(where, within);
  }
  if (!source.empty() && source.back() == ']') {
    return tree_->make<ASTNode>(where, {}, vel::ASTType::StringTypeSpec);
  }
  const std::size_t dot = source.find('.');
  if (dot == std::string_view::npos || source.front() == '%') {
    return tree_->expression(where, Expression::Variable);
  }
  Expression* const base =
      tree_->expression(span(source.substr(0, dot), offset), Expression::Variable);
  Expression* const bit = tree_->expression(where, Expression::Typed, {base});
  vel::TreeBuilder::setBitAccessOffset(*bit, std::stoi(std::string(source.substr(dot + 1))));
  return bit;
}

void KitHost::accepted(ASTNode& invocation, const std::string& resultType) {
  recordTypes(invocation);
  const hostkit::ElementaryType* const result = hostkit::elementaryType(resultType);
  if (result != nullptr) results_[&invocation] = {result->type, result->name};
  const std::string name = AstNodeHelper::astText(invocation.leaf(0));
  const std::string op = vel::stringToUpper(name);
  if (op != "MEP" && op != "MEF") return;
  const std::string digest = AstNodeHelper::opExpTextToMd5HexText(
      name, AstNodeHelper::astText(invocation.leaf(1)->leaf(0)));
  program_->addVariable(unit_, std::make_unique<EdgeState>(digest, type("BOOL"), placeState()));
}

void KitHost::recordTypes(ASTNode& invocation) {
  ASTNode* const list = invocation.leaf(1);
  std::vector<vel::VELMessage> messages;
  for (int i = 0; i < list->leavesCount(); ++i) {
    auto* const parameter = dynamic_cast<Expression*>(list->leaf(i));
    if (parameter != nullptr) parameter->setBasicType(typeOf(*parameter, unit_, messages).type);
  }
}

DataTypeInfo KitHost::typeOf(ASTNode& node, const std::string& unit,
                             std::vector<vel::VELMessage>& messages) {
  const auto result = results_.find(&node);
  if (result != results_.end()) return result->second;
  const auto* const expression = dynamic_cast<const Expression*>(&node);
  if (expression == nullptr) return {};
  if (expression->op() == kWrapper) return typeOf(*node.leaf(0), unit, messages);
  if (expression->op() == Expression::Typed) return {BasicDataType::Bool, "BOOL"};
  if (expression->op() == Expression::Constant) {
    auto& value = static_cast<ConstantValue&>(*node.leaf(0));
    return {value.basicData().type(), value.typeStr()};
  }
  const std::string text = AstNodeHelper::astText(&node);
  const auto* const variable =
      static_cast<vel::SymbolVar*>(program_->find(text.c_str(), unit.c_str(), Symbol::Variable));
  if (variable != nullptr) {
    return {variable->dataType()->dataType(), variable->dataType()->typeName()};
  }
  vel::HeapAddress address;
  if (!map_.parse(text, address)) return {};
  const char* const name = hostkit::addressTypeName(address);
  return {hostkit::elementaryType(std::string_view(name))->type, name};
}

// STRING, whatever the length.
vel::SymbolDataType* KitHost::resolve(ASTNode& typeSpec, vel::VarContainer& /*unit*/) {
  const std::string text = AstNodeHelper::astText(&typeSpec);
  return type(text.substr(0, text.find('[')));
}

Symbol* KitHost::find(const char* name, const char* unit, Symbol::Type kind) {
  const bool program = program_ != nullptr;
  if (kind == Symbol::Variable) return program ? program_->find(name, unit, kind) : nullptr;
  if (kind == Symbol::All && program) {
    if (Symbol* const variable = program_->find(name, unit, Symbol::Variable)) return variable;
  }
  if (Symbol* const known = table_.find(name, unit, kind)) return known;
  return program ? program_->find(name, unit, Symbol::Pou) : nullptr;
}

bool KitHost::isWritable(ASTNode& invocation, const std::string& text, const std::string& /*unit*/,
                         std::vector<vel::VELMessage>& messages) {
  if (constants_.count(text) == 0) return true;
  vel::VELMessage& message = messages.emplace_back();
  message.location = invocation.pos();
  message.severity = 1;
  message.code = 0xF0002;
  message.text = "'" + text + "' is a constant;";
  return false;
}
