// A host on the kit: has the plugin check the calls that it reads, and prints their C.
#include <iostream>
#include <unordered_map>

#include "hostkit/device_map.h"
#include "hostkit/edge_state.h"
#include "hostkit/elementary_types.h"
#include "hostkit/literal_text.h"
#include "hostkit/operator_calls.h"
#include "hostkit/plugin_library.h"
#include "hostkit/unit.h"
#include "line.h"

using namespace hostkit;

namespace {

// The unit around all calls: a function, whose hidden variables are static in C.
constexpr const char* kUnit = "Calls";
constexpr vel::POUType kUnitType = vel::POUType::Function;

class Host final : public Answers {
 public:
  Host() : unit_(new Unit(&services, kUnit, kUnitType)) { symbols_.addUnit(unit_); }

  Services services{this};

  // Prints what comes of a line; false when there is an error in it.
  bool process(const std::string& text, std::uint32_t number) {
    Tree tree;
    std::string c;
    types_.clear();
    messages_.clear();
    try {
      const Line line(text, number, tree);
      if (line.call != nullptr) c = compile(line, tree);
      if (!line.type.empty()) declare(line);
    } catch (const vel::VELMessage& fault) {
      messages_.push_back(fault);
    }
    bool accepted = true;
    for (const vel::VELMessage& message : messages_) {
      accepted = accepted && !isError(message);
      std::cout << message.location.file() << ':' << message.location.offset() << ": "
                << messageText(message) << '\n';
    }
    if (accepted && !c.empty()) std::cout << c << '\n';
    return accepted;
  }

  // The analysis has recorded them; operators ask more than once.
  DataTypeInfo typeOf(vel::ASTNode& expression, const std::string& /*unit*/,
                      std::vector<vel::VELMessage>& /*messages*/) override {
    return types_[&expression];
  }
  // The table holds the elementary types, all units, and what lines declare.
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) override {
    return symbols_.find(name, unit, kind);
  }
  // The names of operators are taken for all other units.
  bool addUnit(vel::SymbolPOU* unit) override { return symbols_.addUnit(unit); }
  // The device has the memory that the map describes.
  bool parseAddress(const std::string& text, vel::HeapAddress& out) override {
    return memory_.parse(text, out);
  }
  // The runtime lays its `_m` out like the map.
  vel::HeapRawAddr place(const vel::HeapAddress& address) override { return memory_.raw(address); }
  // C has other literals, minds the letter case of names, and knows no addresses.
  std::string expressionText(vel::ASTNode& node) override {
    auto& operand = static_cast<Expression&>(node);
    if (operand.op() == kCall) return '(' + generate(*operand.leaf(0)) + ')';
    const std::string text = AstNodeHelper::astText(&operand);
    if (operand.op() == Expression::Constant) return literalText(text);
    if (const auto* const variable = symbols_.variable(text, kUnit)) return variable->name();
    vel::HeapAddress address;
    return memory_.parse(text, address) ? memory_.text(address) : text;
  }

 private:
  bool declare(const Line& line) {
    const std::string name = AstNodeHelper::astText(line.subject);
    vel::SymbolDataType* const type = symbols_.type(line.type);
    if (type == nullptr) return refuse(*line.subject, "has no elementary type");
    if (symbols_.variable(name, kUnit) != nullptr)
      return refuse(*line.subject, "is already declared");
    const auto kind = line.isBitParameter ? vel::SymbolVar::kBitParameter : vel::SymbolVar::kInput;
    unit_->addParameter(std::make_unique<vel::SymbolVar>(name, type, kind));
    return true;
  }

  // `TYPE: C`, or just the C where there is no type. With an error among the messages nothing.
  std::string compile(const Line& line, Tree& tree) {
    const bool assigns = line.subject != nullptr;
    // Operators take the first of two leaves around a call for what the result is assigned to.
    Tree::Leaves leaves{line.call};
    if (assigns) leaves.insert(leaves.begin(), line.subject);
    tree.unit(kUnit, kUnitType, {tree.make<vel::ASTNode>({}, std::move(leaves), kStatementNode)});
    if ((assigns && !analyse(*line.subject)) || !analyse(*line.call)) return {};
    const DataTypeInfo& type = types_[line.call];
    const auto target = assigns ? line.subject->basicType() : type.type;
    if (assigns &&
        (target == vel::BasicDataType::None || rate(target, type.type, nullptr, kUnit) < -1)) {
      refuse(*line.subject, "takes no " + type.name);
    }
    return (type.name.empty() ? "" : type.name + ": ") + generate(*line.call);
  }

  bool analyse(Expression& operand) {
    const std::string text = AstNodeHelper::astText(&operand);
    DataTypeInfo type;
    vel::HeapAddress address;
    if (operand.op() == kCall) {
      if (!analyse(static_cast<Invocation&>(*operand.leaf(0)))) return false;
      type = types_[operand.leaf(0)];
    } else if (operand.op() == Expression::Constant) {
      type = typeInfo(static_cast<ConstantValue&>(*operand.leaf(0)).typeStr());
    } else if (const auto* const variable = symbols_.variable(text, kUnit)) {
      type = typeInfo(variable->dataType()->name());
    } else if (text[0] == '%') {  // some operators want addresses, and refuse other texts
      if (memory_.parse(text, address)) type = typeInfo(addressTypeName(address));
    } else if (symbols_.type(text) == nullptr) {  // which SIZEOF takes
      return refuse(operand, "is not declared");
    }
    operand.setBasicType(type.type);
    types_[&operand] = type;
    return true;
  }

  bool analyse(Invocation& call) {
    bool known = true;
    for (int i = 0; i < call.leaf(1)->leavesCount(); ++i) {
      known = analyse(static_cast<Expression&>(*call.leaf(1)->leaf(i))) && known;
    }
    const auto type = known ? checkCall(services, call, kUnit, messages_) : std::nullopt;
    if (!type) return false;
    types_[&call] = *type;
    declareEdgeState(symbols_, memory_, kUnit, call);
    return true;
  }

  std::string generate(vel::ASTNode& call) {
    return generateCall(services, generator_, static_cast<Invocation&>(call), messages_);
  }
  bool refuse(vel::ASTNode& node, const std::string& why) {
    messages_.push_back(errorAt(node.pos(), "'" + AstNodeHelper::astText(&node) + "' " + why));
    return false;
  }

  SymbolTable symbols_;
  DeviceMap memory_{DeviceMap::Sizes()};
  TextGenerator generator_{services};
  Unit* unit_;                                                   // the table's
  std::unordered_map<const vel::ASTNode*, DataTypeInfo> types_;  // of the line's expressions
  std::vector<vel::VELMessage> messages_;                        // on the line
};

}  // namespace

int main(int count, char** arguments) {
  Host host;
  PluginLibrary library;  // ends before the services that its registry uses
  std::string error = "usage: host PLUGIN [ADD-ON...] < calls.txt";
  if (count < 2 ||
      !library.start(host.services, arguments[1], {arguments + 2, arguments + count}, error)) {
    std::cerr << error << '\n';
    return 2;
  }
  bool accepted = true;
  std::string text;
  for (std::uint32_t number = 1; std::getline(std::cin, text); ++number) {
    accepted = host.process(text, number) && accepted;
  }
  return accepted ? 0 : 1;
}
