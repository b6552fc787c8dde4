#include "refhost/semantics/configurations.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "hostkit/folding.h"
#include "hostkit/literal.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"
#include "refhost/spelling.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

std::string nameOf(const Text* text) { return text != nullptr ? text->text() : ""; }
std::string nameOf(const ASTNode& item) { return static_cast<const Text&>(*item.leaf(0)).text(); }

// The milliseconds of a TIME made of literals and constants with + - * /; empty for other
// expressions. `depth` ends the search in a constant that depends on itself, which is reported.
std::optional<std::int64_t> constantTime(const Expr& value, int depth = 0) {
  if (depth > 100) return {};
  if (const Literal* const literal = literalOf(value)) return literal->value.ticks;
  const VarSymbol* const variable = asVariable(value.symbol);
  if (variable != nullptr) {
    const bool known = variable->constant && variable->initial != nullptr;
    return known ? constantTime(*variable->initial, depth + 1) : std::nullopt;
  }
  if (formOf(value.kind) != ExprForm::Arithmetic) return {};
  const auto operand = [&](int i) -> std::optional<Integer> {
    const auto& part = static_cast<const Expr&>(*value.leaf(i));
    if (isInteger(typeOf(part))) return constantInteger(part);
    return constantTime(part, depth + 1);
  };
  const std::optional<Integer> left = operand(0);
  const std::optional<Integer> right = operand(1);
  if (!left || !right) return {};
  const bool divides = value.kind == ExprKind::Divide && *right != 0;
  const std::optional<Integer> result = value.kind == ExprKind::Add        ? *left + *right
                                        : value.kind == ExprKind::Subtract ? *left - *right
                                        : value.kind == ExprKind::Multiply ? *left * *right
                                        : divides ? std::optional<Integer>(*left / *right)
                                                  : std::nullopt;
  if (!result || !fits(*result, BasicDataType::DInt)) return {};
  return static_cast<std::int64_t>(*result);
}

}  // namespace

void Configurations::declare() {
  FoldedMap<const Text*> resources;
  for (const Text* const resource : tree_.resources) {
    const auto [known, added] = resources.emplace(resource->text(), resource);
    if (!added) sayRedeclared(*resource, resource->text(), known->second);
  }
  for (const ConfigurationItem* const node : tree_.tasks) declareTask(*node);
  for (const ConfigurationItem* const node : tree_.instances) declareInstance(*node);
}

// Says nothing of what stands in a second resource of one name, which has been reported.
void Configurations::sayAgain(const ConfigurationItem& again, const ConfigurationItem& first) {
  if (again.resource != first.resource) return;
  sayRedeclared(*again.leaf(0), TreeBuilder::source(*again.leaf(0)), first.leaf(0));
}

void Configurations::declareTask(const ConfigurationItem& node) {
  Configuration& configuration = services_.configuration;
  Task task;
  task.resource = nameOf(node.resource);
  task.name = nameOf(node);
  task.node = &node;
  if (const Task* const known = configuration.task(task.resource, task.name)) {
    sayAgain(node, *known->node);
    return;
  }
  configuration.tasks.push_back(std::move(task));
}

const Task* Configurations::taskOf(const ConfigurationItem& instance) {
  const ASTNode* const name = instance.leaf(2);
  if (name == nullptr) return nullptr;
  const std::string_view wanted = TreeBuilder::source(*name);
  for (const std::string& resource : {nameOf(instance.resource), std::string()}) {
    const Task* const task = services_.configuration.task(resource, wanted);
    if (task != nullptr) return task;
  }
  if (tree_.incomplete) return nullptr;
  Spelling spelling(wanted);
  for (const Task& task : services_.configuration.tasks) {
    const bool visible =
        task.resource.empty() || equalIgnoringCase(task.resource, nameOf(instance.resource));
    if (visible) spelling.offer(task.name);
  }
  Suggestions::add(say(*name, message::kUnknownTask, wanted), rangeOf(*name), spelling);
  return nullptr;
}

void Configurations::declareInstance(const ConfigurationItem& node) {
  Configuration& configuration = services_.configuration;
  const std::string owner = nameOf(node.configuration);
  if (configuration.instances.empty()) {
    configuration.name = owner;
  } else if (!equalIgnoringCase(configuration.name, owner)) {
    say(*node.leaf(0), message::kSecondConfiguration, configuration.name)
        .note(rangeOf(*configuration.instances.front().node), "its first instance is here");
    return;
  }
  ProgramInstance instance;
  instance.resource = nameOf(node.resource);
  instance.name = nameOf(node);
  instance.retention = node.retention;
  instance.task = taskOf(node);
  instance.connections = static_cast<Call*>(node.leaf(1));
  const std::string_view type = TreeBuilder::source(*instance.connections->leaf(0));
  instance.program = services_.symbols.unit(type);
  if (instance.program == nullptr || instance.program->type() != vel::POUType::Program) {
    misnamed_ = true;
    if (instance.program != nullptr || !tree_.incomplete) {
      context_.noteMissing(type);
      Remarks& said = say(*instance.connections, message::kNotAProgram, type);
      Spelling spelling(type);
      for (const UnitSymbol* const unit : services_.symbols.units()) {
        if (unit->type() == vel::POUType::Program) spelling.offer(unit->name());
      }
      Suggestions::add(said, rangeOf(*instance.connections->leaf(0)), spelling);
    }
    return;
  }
  instance.node = &node;
  if (const auto* const known = configuration.instance(instance.resource, instance.name)) {
    sayAgain(node, *known->node);
    return;
  }
  instance.program->instantiated = true;
  instance.program->node->kind = kKindOfInstances;
  configuration.instances.push_back(std::move(instance));
}

void Configurations::setProperty(Task& task, BasicDataType type, const Expr& value) {
  if (type == BasicDataType::Bool) {
    task.single = const_cast<Expr*>(&value);
  } else if (type == BasicDataType::Time) {
    task.interval = constantTime(value).value_or(-1);
    if (task.interval < 0 && value.dataType != nullptr)
      say(value, message::kTaskInterval, TreeBuilder::source(value));
  } else {
    const Integer priority = constantInteger(value).value_or(-1);
    const bool fitting = fits(priority, BasicDataType::UInt);
    const bool known = value.dataType != nullptr && !tree_.incomplete;
    if (!fitting && known) say(value, message::kTaskPriority, TreeBuilder::source(value));
    task.priority = fitting ? static_cast<std::int64_t>(priority) : 0;
  }
}

void Configurations::analyseTask(Task& task) {
  ASTNode& properties = *task.node->leaf(1)->leaf(1);
  std::array<const Expr*, kTaskProperties.size()> given{};
  const std::size_t before = messages_.count();
  for (int i = 0; i < properties.leavesCount(); ++i) {
    ASTNode& property = *properties.leaf(i);
    const bool named = kindOf(property) == NodeKind::Argument;
    const std::string_view name = TreeBuilder::source(named ? *property.leaf(0) : property);
    const auto* const known =
        std::find_if(kTaskProperties.begin(), kTaskProperties.end(),
                     [name](const TaskProperty& row) { return equalIgnoringCase(row.name, name); });
    if (!named || known == kTaskProperties.end()) {
      Remarks& said = say(named ? *property.leaf(0) : property, message::kTaskProperty, name);
      Spelling spelling(name);
      for (const TaskProperty& row : kTaskProperties) spelling.offer(row.name);
      if (named) Suggestions::add(said, rangeOf(*property.leaf(0)), spelling);
      continue;
    }
    const Expr*& value = given[static_cast<std::size_t>(known - kTaskProperties.begin())];
    if (value != nullptr) {
      sayTwice(property, name, *value->parent());
      continue;
    }
    const std::size_t first = messages_.count();
    const Type* const type = services_.symbols.elementary(known->type);
    const bool number = known->type == BasicDataType::UInt;
    value = &parts_.expressions.analyseLeaf(
        property, 1, number ? services_.symbols.elementary(BasicDataType::LInt) : type);
    // A number is judged by its value.
    if (!number || !constantInteger(*value)) {
      parts_.assignments.check(type, value->dataType, *value);
    }
    if (!hasErrorFrom(first)) setProperty(task, known->type, *value);
  }
  if (hasErrorFrom(before)) return;
  const auto& [interval, single, priority] = given;
  if (single != nullptr || task.interval != 0) return;
  if (interval != nullptr) {
    say(*interval, message::kTaskInterval, TreeBuilder::source(*interval));
  } else {
    say(*task.node->leaf(0), message::kTaskNeverDue, task.name);
  }
}

// The connections of an instance are checked like the arguments of a call of the PROGRAM.
void Configurations::analyseConfigurations() {
  Configuration& configuration = services_.configuration;
  if (configuration.tasks.empty() && configuration.instances.empty()) return;
  UnitSymbol empty(&services_, tree_.make<Unit>("", vel::POUType::Program));
  context_.enter(&empty);
  for (Task& task : configuration.tasks) analyseTask(task);
  for (const ProgramInstance& instance : configuration.instances) {
    parts_.calls.analyseArguments(*instance.connections, *instance.program);
  }
  if (configuration.instances.empty() || misnamed_) return;
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    if (unit->type() != vel::POUType::Program || unit->instantiated) continue;
    say(*unit->node->leaf(Unit::kName), message::kNoInstance, unit->name());
  }
}

}  // namespace refhost
