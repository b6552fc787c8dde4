// Any tree through check, generate and staticCode of every operator.
#include <cstdlib>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "fuzz/fuzz_host.h"
#include "hostkit/tree.h"

namespace {

struct Plugin {
  Plugin() : registry(CreateOpManager(&host)) {
    host.operators = registry.get();
    registry->operatorNames(names);
  }

  fuzz::FuzzHost host;
  std::unique_ptr<vel::OpManagerAPI> registry;
  std::vector<std::string> names;
};

// The syntax tree of one input.
class FuzzTree {
 public:
  explicit FuzzTree(fuzz::FuzzHost& host) : host_(host), input_(*host.input) {}

  // A call of `name` or of anything else, well-formed or not, under parents of any kind;
  // null at times.
  vel::ASTNode* call(const std::string& name) {
    constexpr int kDepth = 3;
    vel::ASTNode* const made = host_.chance() ? invocation(name, kDepth) : node(kDepth);
    Leaves siblings = {made};
    if (host_.chance()) siblings.insert(siblings.begin(), node(1));
    vel::ASTNode* const parent = host_.chance()
                                     ? add<vel::ASTNode>(siblings, hostkit::kStatementNode)
                                     : add<Expression>(siblings, Expression::Operator{2});
    if (host_.chance()) {
      const char* const unitName = textOrNull();
      const auto type = static_cast<vel::POUType>(input_.ConsumeIntegralInRange(0, 5));
      auto* const unit = add<POUDeclaration>({parent}, hostkit::kUnitNode, unitName, type);
      unit->kind = input_.ConsumeIntegralInRange(-1, 4);
    }
    return made;
  }

 private:
  using Leaves = hostkit::Tree::Leaves;

  vel::ASTNode* node(int depth) {
    switch (input_.ConsumeIntegralInRange(0, 8)) {
      case 0:
        return nullptr;
      case 1: {
        const auto kind = static_cast<vel::ASTType>(input_.ConsumeIntegral<std::uint8_t>());
        // Only expressions have their kind.
        return kind == vel::ASTType::Expression ? nullptr : add<vel::ASTNode>(leaves(depth), kind);
      }
      case 2:
        return add<vel::ASTText>({}, hostkit::kWordNode, textOrNull());
      case 3:
        return add<ConstantValue>(leaves(depth), host_.type(), tree_.keep(host_.text()),
                                  host_.chance());
      case 4:
        return invocation(host_.text(), depth);
      default: {
        const auto op = static_cast<Expression::Operator>(input_.ConsumeIntegralInRange(0, 21));
        auto* const made = add<Expression>(leaves(depth), op);
        made->setBasicType(host_.type());
        if (host_.chance()) {
          vel::TreeBuilder::setBitAccessOffset(*made, input_.ConsumeIntegralInRange(-2, 70));
        }
        return made;
      }
    }
  }
  Leaves leaves(int depth) {
    Leaves drawn(input_.ConsumeIntegralInRange<std::size_t>(0, depth > 0 ? 5 : 0));
    for (vel::ASTNode*& leaf : drawn) leaf = node(depth - 1);
    return drawn;
  }
  vel::ASTNode* invocation(const std::string& name, int depth) {
    vel::ASTNode* const callee = add<vel::ASTText>({}, hostkit::kWordNode, tree_.keep(name));
    vel::ASTNode* const list = add<vel::ASTNode>(leaves(depth), vel::ASTType::ParameterList);
    auto* const made = add<Invocation>({callee, list}, hostkit::kInvocationNode);
    made->setBasicType(host_.type());
    return made;
  }
  const char* textOrNull() {
    const std::string text = host_.text();
    return text == "_" ? nullptr : tree_.keep(text);
  }
  template <class Node, class... Arguments>
  Node* add(Leaves leaves, Arguments... arguments) {
    const std::string source = host_.text();
    const vel::TextLocation start(1, input_.ConsumeIntegral<std::uint16_t>());
    return tree_.make<Node>({source, start}, std::move(leaves), arguments...);
  }

  fuzz::FuzzHost& host_;
  FuzzedDataProvider& input_;
  hostkit::Tree tree_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static Plugin plugin;
  FuzzedDataProvider input(bytes, size);
  plugin.host.input = &input;
  plugin.host.drawSettings();
  const std::string& name =
      plugin.names[input.ConsumeIntegralInRange<std::size_t>(0, plugin.names.size() - 1)];
  vel::STOperator& op = *plugin.registry->findOperator(name);
  FuzzTree tree(plugin.host);
  vel::ASTNode* const call = tree.call(name);
  fuzz::FuzzGenerator generator(plugin.host);

  std::vector<vel::VELMessage> messages;
  std::string resultType;
  op.check(&plugin.host, call, messages, resultType, plugin.host.text());
  for (const vel::VELMessage& message : messages) {
    // Every record has the agreed form.
    const bool sound = message.reserved == -1 && (message.severity == 1 || message.severity == 2) &&
                       message.code != 0 && message.extra1.empty() && message.extra2.empty();
    if (!sound) std::abort();
  }
  static_cast<void>(op.generate(&generator, call));
  static_cast<void>(op.staticCode(plugin.host.chance() ? &generator : nullptr));
  return 0;
}
