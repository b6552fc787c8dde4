// A host built on the kit: lets the plugin check calls and generate their C.
#pragma once

#include <unordered_map>

#include "hostkit/device_map.h"
#include "hostkit/edge_state.h"
#include "hostkit/elementary_types.h"
#include "hostkit/literal_text.h"
#include "hostkit/operator_calls.h"
#include "hostkit/unit.h"
#include "line.h"

class Host : public hostkit::Answers {
 public:
  Host() { symbols_.addUnit(unit_); }

  hostkit::Services services{this};
  std::vector<vel::VELMessage> messages;  // about the line compiled last

  // `TYPE: C` of the call in a line, or its C if it has no type; empty without a call or on errors.
  std::string compile(const std::string& text, std::uint32_t number) {
    messages.clear();
    try {
      const Line line(text, number, tree_.emplace());
      if (!line.type.empty()) declare(line);
      if (line.call == nullptr || !analyse(line)) return {};
      const std::string& type = results_[line.call].name;
      const std::string c = (type.empty() ? "" : type + ": ") + generate(*line.call);
      return std::any_of(messages.begin(), messages.end(), hostkit::isError) ? "" : c;
    } catch (const vel::VELMessage& fault) {
      messages.push_back(fault);
      return {};
    }
  }

  // A name has the type of its declaration, and a call the type that its check has returned.
  DataTypeInfo typeOf(vel::ASTNode& node, const std::string& unit,
                      std::vector<vel::VELMessage>& told) override {
    if (node.type() == hostkit::kInvocationNode) return results_[&node];
    const auto& operand = static_cast<Expression&>(node);
    const std::string text = AstNodeHelper::astText(&node);
    vel::HeapAddress address;
    if (operand.op() == kCall) return results_[operand.leaf(0)];
    if (AstNodeHelper::checkBitAccessAst(&services, &node, text, unit, told))
      return hostkit::typeInfo("BOOL");
    if (operand.op() == Expression::Constant)
      return hostkit::typeInfo(static_cast<ConstantValue*>(operand.leaf(0))->typeStr());
    if (const auto* const found = variable(text, unit))
      return hostkit::typeInfo(found->dataType()->name());
    if (memory_.parse(text, address)) return hostkit::typeInfo(hostkit::addressTypeName(address));
    return {};
  }
  // The symbol table contains the elementary types, all units, and the declared variables.
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) override {
    return symbols_.find(name, unit, kind);
  }
  // Keeps the units of operators, so that no other unit can have their names.
  bool addUnit(vel::SymbolPOU* unit) override { return symbols_.addUnit(unit); }
  // The map describes the memory of the device.
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override {
    return memory_.parse(text, out);
  }
  // The runtime's `_m` has the same layout as the map.
  vel::HeapRawAddr place(const vel::HeapAddress& address) override { return memory_.raw(address); }
  // Translates literals, the letter case of names, bits and addresses, which differ in C.
  std::string expressionText(vel::ASTNode& node) override {
    auto& operand = static_cast<Expression&>(node);
    const std::string text = AstNodeHelper::astText(&node);
    vel::HeapAddress address;
    if (operand.op() == kCall) return '(' + generate(*operand.leaf(0)) + ')';
    if (operand.op() == Expression::Typed)
      return "vgbit((" + expressionText(*operand.leaf(0)) + ", " +
             std::to_string(operand.bitAccessOffset()) + "))";
    if (operand.op() == Expression::Constant) return hostkit::literalText(text);
    if (const auto* const found = variable(text, unit_->name())) return found->name();
    return memory_.parse(text, address) ? memory_.text(address) : text;
  }

 protected:
  // Checks a call and the calls among its operands, and records types; false when one is refused.
  bool analyse(const Line& line) {
    results_.clear();
    // If the parent of a call has two leaves, operators take the first for an assignment's target.
    hostkit::Tree::Leaves leaves{line.call};
    if (line.subject != nullptr) leaves.insert(leaves.begin(), line.subject);
    auto* const body = tree_->make<vel::ASTNode>({}, std::move(leaves), hostkit::kStatementNode);
    tree_->unit(unit_->name(), unit_->type(), {body});
    if (line.subject == nullptr) return analyse(*line.call);
    if (!analyse(*line.subject) || !analyse(*line.call)) return false;
    const auto target = line.subject->basicType();
    const DataTypeInfo& type = results_[line.call];
    if (target == vel::BasicDataType::None || rate(target, type.type, nullptr, unit_->name()) < -1)
      return refuse(*line.subject, "takes no " + type.name);
    return true;
  }

  vel::SymbolVar* variable(const std::string& name, const std::string& unit) {
    return static_cast<vel::SymbolVar*>(find(name.c_str(), unit.c_str(), vel::Symbol::Variable));
  }

  std::optional<hostkit::Tree> tree_;  // tree of the current line
  // Contains all calls. A function, so that hidden variables are static in C. The table owns it.
  hostkit::Unit* unit_ = new hostkit::Unit(&services, "Calls", vel::POUType::Function);
  hostkit::TextGenerator generator_{services};

 private:
  bool declare(const Line& line) {
    const std::string name = AstNodeHelper::astText(line.subject);
    vel::SymbolDataType* const type = symbols_.type(line.type);
    if (type == nullptr) return refuse(*line.subject, "has no elementary type");
    if (variable(name, unit_->name())) return refuse(*line.subject, "is already declared");
    unit_->addParameter(std::make_unique<vel::SymbolVar>(name, type, line.kind));
    return true;
  }

  bool analyse(Expression& operand) {
    if (operand.op() == kCall && !analyse(static_cast<Invocation&>(*operand.leaf(0)))) return false;
    const std::string text = AstNodeHelper::astText(&operand);
    const DataTypeInfo type = typeOf(operand, unit_->name(), messages);
    // Calls may have no type, operators report invalid addresses, and SIZEOF accepts types.
    if (type.name.empty() && operand.op() != kCall && text[0] != '%' && !symbols_.type(text))
      return refuse(operand, "is not declared");
    operand.setBasicType(type.type);
    return true;
  }

  bool analyse(Invocation& call) {
    bool known = true;
    for (int i = 0; i < call.leaf(1)->leavesCount(); ++i) {
      known = analyse(static_cast<Expression&>(*call.leaf(1)->leaf(i))) && known;
    }
    const auto type =
        known ? hostkit::checkCall(services, call, unit_->name(), messages) : std::nullopt;
    if (!type) return false;
    results_[&call] = *type;
    hostkit::declareEdgeState(symbols_, memory_, unit_->name(), call);
    return true;
  }

  std::string generate(vel::ASTNode& call) {
    return hostkit::generateCall(services, generator_, static_cast<Invocation&>(call), messages);
  }
  bool refuse(vel::ASTNode& node, const std::string& why) {
    const std::string name = AstNodeHelper::astText(&node);
    messages.push_back(hostkit::errorAt(node.pos(), "'" + name + "' " + why));
    return false;
  }

  hostkit::SymbolTable symbols_;
  hostkit::DeviceMap memory_{hostkit::DeviceMap::Sizes()};
  std::unordered_map<const vel::ASTNode*, DataTypeInfo> results_;  // types of the line's calls
};
