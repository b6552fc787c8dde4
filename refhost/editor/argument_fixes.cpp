#include "refhost/editor/argument_fixes.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "core/operator.h"
#include "hostkit/operator_inputs.h"
#include "refhost/editor/expected_type.h"
#include "refhost/editor/node_search.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/bindings.h"
#include "refhost/services/standard_functions.h"

namespace refhost {

using Type = vel::SymbolDataType;
using vel::TreeBuilder;

namespace {

// A value that a variable of the type has if its declaration gives none; empty for none that can be
// written.
std::string defaultText(const Type& type) {
  if (const auto* const enumeration = dynamic_cast<const EnumType*>(&type)) {
    const bool named = !isAnonymous(type) && !enumeration->values().empty();
    return named ? enumeration->name() + "#" + enumeration->values().front()->name() : "";
  }
  const BasicDataType basic = type.dataType();
  if (elementaryType(basic) == nullptr) return {};
  if (isInteger(basic)) return textOf(implicitInitial(&type));
  if (isFloat(basic)) return "0.0";
  switch (basic) {
    case BasicDataType::Bool:
      return "FALSE";
    case BasicDataType::Time:
      return "T#0s";
    case BasicDataType::LTime:
      return "LTIME#0s";
    case BasicDataType::Date:
      return "D#1970-01-01";
    case BasicDataType::TimeOfDay:
      return "TOD#00:00:00";
    case BasicDataType::DateAndTime:
      return "DT#1970-01-01-00:00:00";
    case BasicDataType::String:
      return "''";
    case BasicDataType::WString:
      return "\"\"";
    default:
      return {};
  }
}

// The function or the function block that is called; null for anything else.
const UnitSymbol* unitOf(const Call& call) {
  if (call.instance == nullptr) return call.function();
  const auto* const instance = dynamic_cast<const InstanceType*>(call.instance->dataType);
  return instance != nullptr ? instance->unit : nullptr;
}

// The parameter that `a` is in the argument `a = 3`, which compares a variable that there is not;
// null for other arguments.
const VarSymbol* comparedParameter(const Call& call, const ASTNode& argument) {
  const bool equal =
      isBinary(argument) && static_cast<const Expr&>(argument).kind == ExprKind::Equal;
  const UnitSymbol* const unit = equal ? unitOf(call) : nullptr;
  if (unit == nullptr || dataTypeOf(*argument.leaf(0)) != nullptr) return nullptr;
  const VarSymbol* const parameter = unit->variable(TreeBuilder::source(*argument.leaf(0)));
  return parameter != nullptr && parameter->isParameter() ? parameter : nullptr;
}

class CallArguments {
 public:
  CallArguments(const AnalysedProgram& program, const Call& call)
      : program_(program), call_(call), list_(*call.parameters()) {
    if (call.op() != nullptr) {
      for (std::string& name : inputNames(program.services, call.op()->name)) {
        inputs_.push_back({std::move(name), nullptr, true});
      }
      if (call.traits()->has(OperatorTraits::kExtensible)) addNext();
    } else if (call.standard() != nullptr) {
      const StandardFunction& function = *call.standard();
      for (const std::string_view name : function.formals) {
        const bool needed = static_cast<int>(inputs_.size()) < function.inputs();
        if (!name.empty()) inputs_.push_back({std::string(name), nullptr, needed});
      }
    } else if (const UnitSymbol* const unit = unitOf(call)) {
      const bool function = unit->standard && unit->type() == vel::POUType::Function;
      for (const auto& variable : unit->variables()) {
        const bool input = variable->role == Role::Input;
        if (!input && variable->role != Role::InOut) continue;
        const bool needed = (variable->indirect && !variable->reference) || (input && function);
        inputs_.push_back({variable->name(), variable->dataType(), needed});
      }
    }
    noteGiven();
  }

  // Names all positional arguments by the parameters at their positions or, where these have been
  // given by name, by the next ones.
  void name(std::vector<Fix>& fixes) {
    Fix fix{"Name the arguments", {}};
    for (int i = 0; i < list_.leavesCount(); ++i) {
      if (kindOf(*list_.leaf(i)) == NodeKind::Argument) continue;
      // It has a name, and only its sign is wrong.
      if (comparedParameter(call_, *list_.leaf(i)) != nullptr) return;
      Input* const input = inputFor(static_cast<std::size_t>(i));
      if (input == nullptr) return;
      input->given = true;
      const vel::TextLocation begin = list_.leaf(i)->pos();
      fix.edits.push_back({{begin, 0}, input->name + " := "});
    }
    if (!fix.edits.empty()) fixes.push_back(std::move(fix));
  }

  // Adds all arguments that are missing.
  void complete(std::vector<Fix>& fixes) {
    const int positional = list_.leavesCount() - namedArguments(list_);
    const bool known = call_.op() == nullptr || hasUsualOperands();
    std::string added;
    std::string names;
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
      const Input& input = inputs_[i];
      if (input.given || !input.needed || static_cast<int>(i) < positional) continue;
      const Type* const type = input.type != nullptr ? input.type : typeAt(static_cast<int>(i));
      const std::string value = known && type != nullptr ? defaultText(*type) : std::string();
      if (value.empty()) return;
      names += (names.empty() ? "" : ", ") + input.name;
      added += (added.empty() ? "" : ", ") + input.name + " := " + value;
    }
    const std::string_view source = TreeBuilder::source(list_);
    if (added.empty() || source.empty() || source.back() != ')') return;
    if (list_.leavesCount() > 0) added.insert(0, ", ");
    const vel::TextLocation end(
        list_.pos().file(), list_.pos().offset() + static_cast<std::uint32_t>(source.size()) - 1);
    fixes.push_back({"Add the arguments that are missing: " + names, {{{end, 0}, added}}});
  }

  bool hasInput(std::string_view name) const {
    return std::any_of(inputs_.begin(), inputs_.end(),
                       [name](const Input& input) { return equalIgnoringCase(input.name, name); });
  }

 private:
  struct Input {
    std::string name;
    const Type* type;  // null if it depends on the other arguments
    bool needed;
    bool given = false;
  };

  // An operator that takes any number of operands takes two at least: IN2 behind IN1.
  void addNext() {
    std::string name = inputs_.back().name;
    ++name.back();
    inputs_.push_back({std::move(name), nullptr, true});
  }

  void noteGiven() {
    for (int i = 0; i < list_.leavesCount(); ++i) {
      if (kindOf(*list_.leaf(i)) != NodeKind::Argument) continue;
      const std::string_view name = TreeBuilder::source(*list_.leaf(i)->leaf(0));
      for (Input& input : inputs_) input.given = input.given || equalIgnoringCase(input.name, name);
    }
  }

  Input* inputFor(std::size_t position) {
    if (position < inputs_.size() && !inputs_[position].given) return &inputs_[position];
    const auto free = std::find_if(inputs_.begin(), inputs_.end(),
                                   [](const Input& input) { return !input.given; });
    return free != inputs_.end() ? &*free : nullptr;
  }

  // False for operators whose operands are addresses or must be variables.
  bool hasUsualOperands() const {
    const OperatorTraits& traits = *call_.traits();
    const OperatorFamily family = traits.family;
    return traits.namedOperands == 0 && traits.givesValue() && family != OperatorFamily::Edge &&
           family != OperatorFamily::Other;
  }

  // The type of an operand that is missing.
  const Type* typeAt(int index) const {
    if (const Type* const type = operandType(program_.services, call_, index)) return type;
    const int first = call_.traits() != nullptr ? call_.traits()->firstChoice : 0;
    for (int i = first; i < list_.leavesCount(); ++i) {
      const bool named = kindOf(*list_.leaf(i)) == NodeKind::Argument;
      const ASTNode& value = named ? *list_.leaf(i)->leaf(1) : *list_.leaf(i);
      if (const Type* const type = typeHolding(program_.services, value)) return type;
    }
    // What is compared may be of any type.
    const StandardFunction* const standard = call_.standard();
    if (standard != nullptr && standard->kind == StandardFunction::Kind::Comparison) return nullptr;
    const Type* const wanted = expectedType(program_.services, call_);
    return wanted != nullptr ? wanted : program_.services.symbols.elementary(BasicDataType::Int);
  }

  const AnalysedProgram& program_;
  const Call& call_;
  const ASTNode& list_;
  std::vector<Input> inputs_;
};

// The call of the argument, or of its name, that `node` is.
const Call* callAround(const ASTNode* node) {
  for (int levels = 0; node != nullptr && levels < 3; ++levels, node = node->parent()) {
    if (node->type() == vel::ASTType::ParameterList) return callIn(node->parent());
  }
  return nullptr;
}

// An output that is given, or an input that is stored, takes the other sign.
void addArrow(const ASTNode& argument, std::vector<Fix>& fixes) {
  const Call* const call = callAround(&argument);
  const UnitSymbol* const unit = call != nullptr ? unitOf(*call) : nullptr;
  if (unit == nullptr) return;
  const std::vector<Binding> bindings = bindArguments(*call, *unit);
  const auto bound =
      std::find_if(bindings.begin(), bindings.end(),
                   [&argument](const Binding& one) { return one.node == &argument; });
  const Type* const type = dataTypeOf(*argument.leaf(1));
  if (bound == bindings.end() || bound->parameter == nullptr || type == nullptr) return;
  // Of another type the fault is probably another one.
  const Type* const wanted = bound->parameter->dataType();
  if (wanted == nullptr || !sameType(*type, *wanted)) return;
  const ASTNode& formal = *argument.leaf(0);
  const std::string_view source = TreeBuilder::source(argument);
  const std::string_view wrong = static_cast<const Argument&>(argument).output ? "=>" : ":=";
  const std::string right = wrong == "=>" ? ":=" : "=>";
  const std::uint32_t begin = argument.pos().offset();
  const std::size_t at = source.find(wrong, formal.pos().offset() - begin);
  if (at == std::string::npos || static_cast<const Argument&>(argument).negated) return;
  const vel::TextLocation place(argument.pos().file(), begin + static_cast<std::uint32_t>(at));
  fixes.push_back({"Write '" + right + "'", {{{place, 2}, right}}});
}

// `F(a = 3)` compares a variable that there is none of, where the parameter was meant.
bool addNaming(const ASTNode& name, std::vector<Fix>& fixes) {
  const ASTNode* const comparison = name.parent();
  const ASTNode* const list = comparison != nullptr ? comparison->parent() : nullptr;
  const bool first = list != nullptr && list->type() == vel::ASTType::ParameterList &&
                     comparison->leaf(0) == &name;
  const Call* const call = first ? callIn(list->parent()) : nullptr;
  const VarSymbol* const parameter =
      call != nullptr ? comparedParameter(*call, *comparison) : nullptr;
  if (parameter == nullptr) return false;
  const std::string_view source = TreeBuilder::source(*comparison);
  const std::size_t at = source.find('=', rangeOf(name).length);
  if (at == std::string::npos) return false;
  const std::string sign = parameter->role == Role::Output ? "=>" : ":=";
  const vel::TextLocation place(name.pos().file(),
                                name.pos().offset() + static_cast<std::uint32_t>(at));
  // More likely than a variable of a similar name.
  fixes.insert(fixes.begin(), {"Write '" + sign + "'", {{{place, 1}, sign}}});
  return true;
}

}  // namespace

bool addNamings(const AnalysedProgram& program, const Diagnostic& message,
                std::vector<Fix>& fixes) {
  if (message.code != message::kUnknownName.code) return false;
  const ASTNode* const name = nodeWith(program.tree, message.range);
  return name != nullptr && addNaming(*name, fixes);
}

void addArguments(const AnalysedProgram& program, const Diagnostic& message,
                  std::vector<Fix>& fixes) {
  const bool mixed = message.code == message::kMixedArguments.code;
  const bool unknown = message.code == message::kUnknownParameter.code;
  const bool few = message.code == message::kTooFewArguments.code ||
                   message.code == vel::message::kParameterCount.code;
  if (!mixed && !unknown && !few) return;
  const ASTNode* const node = nodeWith(program.tree, message.range);
  if (node != nullptr && kindOf(*node) == NodeKind::Argument) return addArrow(*node, fixes);
  const Call* const call = few ? callIn(node) : callAround(node);
  if (call == nullptr || call->parameters() == nullptr) return;
  CallArguments arguments(program, *call);
  if (mixed) {
    arguments.name(fixes);
  } else if (few || arguments.hasInput(TreeBuilder::source(*node))) {
    arguments.complete(fixes);
  }
}

}  // namespace refhost
