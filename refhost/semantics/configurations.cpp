#include <algorithm>
#include <array>

#include "hostkit/folding.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

struct TaskProperty {
  std::string_view name;
  BasicDataType type;
};
constexpr TaskProperty kTaskProperties[] = {{"INTERVAL", BasicDataType::Time},
                                            {"SINGLE", BasicDataType::Bool},
                                            {"PRIORITY", BasicDataType::UInt}};

}  // namespace

void Configurations::analyseTask(const ASTNode& task) {
  ASTNode& properties = *task.leaf(1)->leaf(1);
  for (int i = 0; i < properties.leavesCount(); ++i) {
    ASTNode& property = *properties.leaf(i);
    const bool named = kindOf(property) == NodeKind::Argument;
    const std::string_view name = TreeBuilder::source(named ? *property.leaf(0) : property);
    const auto* const known =
        std::find_if(std::begin(kTaskProperties), std::end(kTaskProperties),
                     [name](const TaskProperty& row) { return equalIgnoringCase(row.name, name); });
    if (!named || known == std::end(kTaskProperties)) {
      say(property, message::kTaskProperty, name);
      continue;
    }
    const Expr& value = parts_.expressions.analyseLeaf(property, 1);
    parts_.assignments.check(services_.symbols.elementary(known->type), value.dataType, value);
  }
}

// The connections of an instance are checked like the arguments of a call of the PROGRAM.
void Configurations::analyseInstance(const ASTNode& instance) {
  auto& connections = static_cast<Call&>(*instance.leaf(1));
  const std::string_view name = TreeBuilder::source(*connections.leaf(0));
  UnitSymbol* const program = services_.symbols.unit(name);
  if (program == nullptr || program->type() != vel::POUType::Program) {
    say(connections, message::kNotAProgram, name);
  } else {
    parts_.calls.analyseArguments(connections, *program);
  }
  const ASTNode* const task = instance.leaf(2);
  const auto isNamed = [task](const Node* candidate) {
    return equalIgnoringCase(TreeBuilder::source(*candidate->leaf(0)), TreeBuilder::source(*task));
  };
  if (task != nullptr && std::none_of(tree_.tasks.begin(), tree_.tasks.end(), isNamed)) {
    say(*task, message::kUnknownTask, TreeBuilder::source(*task));
  }
}

void Configurations::analyseConfigurations() {
  if (tree_.tasks.empty() && tree_.instances.empty()) return;
  UnitSymbol empty(&services_, tree_.make<Unit>("", vel::POUType::Program));
  context_.unit = &empty;
  context_.unitName.clear();
  for (const Node* const task : tree_.tasks) analyseTask(*task);
  for (const Node* const instance : tree_.instances) analyseInstance(*instance);
}

}  // namespace refhost
