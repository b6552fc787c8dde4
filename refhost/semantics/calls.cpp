#include <algorithm>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "host/ast_node_helper.h"
#include "hostkit/edge_state.h"
#include "hostkit/operator_inputs.h"
#include "refhost/operator_calls.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/standard_functions.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

// Null when the operand is a type: `SIZEOF(INT)`.
ASTNode* parameterList(const Call& call) {
  ASTNode* const list = call.leaf(1);
  return list != nullptr && list->type() == vel::ASTType::ParameterList ? list : nullptr;
}

}  // namespace

vel::SymbolDataType* Calls::analyseCall(Call& call, const Type* wanted) {
  if (call.analysed) return call.dataType;
  call.analysed = true;
  const std::string_view name = TreeBuilder::source(*call.leaf(0));
  VarSymbol* const variable = parts_.names.variableNamed(name);
  if (call.leaf(0)->type() == vel::ASTType::Expression) {
    call.instance = static_cast<Expr*>(call.leaf(0));
  } else if (variable != nullptr && isInstance(variable->dataType())) {
    call.instance = nameOfInstance(call);
  }
  if (call.instance != nullptr) return callInstance(call);
  call.callee = &calleeNamed(static_cast<const Text&>(*call.leaf(0)).text());
  // The program means its own unit, which has been refused.
  if (call.op() != nullptr && context_.hidden.count(name) != 0) return nullptr;
  if (call.op() != nullptr || call.function() != nullptr) {
    call.dataType = call.op() != nullptr ? callOperator(call, wanted) : callFunction(call);
    call.setBasicType(call.dataType != nullptr ? call.dataType->dataType() : BasicDataType::None);
    return call.dataType;
  }
  if (call.standard() != nullptr) {
    call.dataType = parts_.standardCalls.callStandard(call);
    call.accepted = call.dataType != nullptr;
    return call.dataType;
  }
  if (equalIgnoringCase(name, "REF")) return callReference(call);
  const bool known =
      variable != nullptr || services_.symbols.find(std::string(name), {}, Symbol::All) != nullptr;
  if (variable != nullptr && variable->dataType() == nullptr) return nullptr;
  Remarks* const said = sayUnknown(call, known ? message::kNotCallable : message::kUnknownName,
                                   TreeBuilder::source(*call.leaf(0)));
  if (said != nullptr && !known) parts_.suggestions.addCallee(*said, *call.leaf(0), name);
  return nullptr;
}

// Looks `name`, which is interned, up among the operators, then the program's functions, then the
// standard functions.
const Callee& Calls::calleeNamed(const char* name) {
  Callee*& known = callees_[name];
  if (known != nullptr) return *known;
  known = tree_.make<Callee>();
  Callee& callee = *known;
  callee.op = services_.operators->findOperator(name);
  if (callee.op != nullptr) {
    callee.traits = &hostkit::operatorTraits(callee.op->name);
    return callee;
  }
  const StandardFunction* const standard = standardFunction(name);
  // The prelude declares no standard function of the table, so it need not be parsed for one.
  UnitSymbol* const unit =
      standard != nullptr ? services_.symbols.unit(name) : parts_.declarations.unitNamed(name);
  if (unit != nullptr && unit->type() == vel::POUType::Function) {
    callee.function = unit;
  } else {
    callee.standard = standard;
  }
  return callee;
}

void Calls::requireValue(const Call& call, const Type* type) {
  const bool value = call.op() != nullptr ? call.traits()->givesValue() : type != nullptr;
  const UnitSymbol* const function = call.function();
  if (function != nullptr && context_.mayMiss(function)) return;
  if (call.accepted && !value) {
    say(call, message::kNoResult, TreeBuilder::source(*call.leaf(0)));
  }
}

vel::SymbolDataType* Calls::callOperator(Call& call, const Type* wanted) {
  const std::size_t first = messages_.count();
  const std::string_view written = TreeBuilder::source(*call.leaf(0));
  if (call.traits()->has(OperatorTraits::kNeedsCapitals) && written != call.op()->name) {
    const SourceRange name = rangeOf(*call.leaf(0));
    messages_.report(name, message::kCapitals, {written}).fix(name, call.op()->name);
  }
  takeEnabling(call, nullptr);
  const auto positionOf = [&](std::string_view formal) {
    return operatorInput(services_, call.op()->name, formal);
  };
  if (!orderArguments(call, positionOf)) return nullptr;
  ASTNode* const list = parameterList(call);
  if (list == nullptr) analyseOperandType(call);
  if (list != nullptr && !analyseOperands(call, *list, wanted)) {
    // The error in the operand has been reported, maybe at an earlier use of it.
    if (!hasErrorFrom(0)) say(call, message::kNotAccepted, TreeBuilder::source(*call.leaf(0)));
    return nullptr;
  }
  std::string resultType;
  const std::size_t before = messages_.count();
  call.accepted = callGuarded(*call.op(), call, messages_, [&] {
    return call.op()->check(&services_, &call, messages_.records(), resultType, context_.unitName);
  });
  messages_.setRanges(before, call);
  parts_.assignments.noteOperatorCheck(call, before);
  if (!call.accepted) {
    if (!hasErrorFrom(first)) {
      say(call, message::kNotAccepted, TreeBuilder::source(*call.leaf(0)));
    }
    return nullptr;
  }
  declareEdgeState(call);
  const std::size_t beforeOperands = messages_.count();
  checkOperands(call);
  call.accepted = !hasErrorFrom(beforeOperands);
  call.dataType = resultOf(call, services_.symbols.dataType(resultType));
  if (call.accepted) parts_.doubts.judgeCall(call);
  return call.dataType;
}

// False when an operand has no type. What an operator passes on may have the type that is wanted of
// the result, and it has that of the other values among which the operator chooses.
bool Calls::analyseOperands(const Call& call, ASTNode& list, const Type* wanted) {
  bool known = true;
  const OperatorTraits& traits = *call.traits();
  const bool passes = traits.chooses() || traits.result == OperatorTraits::Result::Passed;
  const auto analyse = [&](int i) {
    const bool passed = passes && i >= traits.firstChoice;
    const Expr& operand = parts_.expressions.analyseLeaf(list, i, passed ? wanted : nullptr);
    known = known && operand.dataType != nullptr;
    if (operand.dataType == nullptr) return;
    if (passed) wanted = operand.dataType;
    if (!isAccess(operand.kind)) return;
    services_.symbols.addAccess(context_.unitName, std::string(TreeBuilder::source(operand)),
                                operand.dataType);
  };
  std::vector<int> open;
  for (int i = 0; i < list.leavesCount(); ++i) {
    if (leavesNameToOperator(call, i)) continue;
    if (passes && i >= traits.firstChoice && parts_.names.isOpen(*list.leaf(i))) {
      open.push_back(i);
    } else {
      analyse(i);
    }
  }
  for (const int i : open) analyse(i);
  return known;
}

// The type of an accepted call. `named` is the result type that the operator reports, null for
// none: operators cannot name derived types, so the host infers those from the operands.
vel::SymbolDataType* Calls::resultOf(Call& call, Type* named) {
  const ASTNode* const list = parameterList(call);
  if (list == nullptr || list->leavesCount() == 0) return named;
  const auto operand = [list](int index) { return static_cast<const Expr*>(list->leaf(index)); };
  const OperatorTraits& traits = *call.traits();
  if (traits.has(OperatorTraits::kGivesAddress)) {
    call.givesAddress = true;
    Type* const target = operand(0)->dataType;
    return target != nullptr ? services_.symbols.pointerType(target, false) : named;
  }
  if (named != nullptr) return named;
  if (traits.result == OperatorTraits::Result::Passed) return operand(0)->dataType;
  if (!traits.givesValue()) return nullptr;
  return traits.chooses() ? chosenType(call) : services_.symbols.elementary(BasicDataType::Bool);
}

// The type that holds each of the values among which the operator chooses.
vel::SymbolDataType* Calls::chosenType(const Call& call) {
  const ASTNode& list = *parameterList(call);
  const int first = call.traits()->firstChoice;
  Type* chosen = static_cast<const Expr*>(list.leaf(first))->dataType;
  for (int i = first + 1; i < list.leavesCount(); ++i) {
    Type* const other = static_cast<const Expr*>(list.leaf(i))->dataType;
    const BasicDataType left = valueType(chosen);
    const BasicDataType right = valueType(other);
    if (isNumber(left) && isNumber(right)) {
      const BasicDataType common = commonNumber(left, right);
      if (common == right && common != left) chosen = other;
      if (common != right && common != left) chosen = services_.symbols.elementary(common);
    } else if (isText(left) ? stringLength(*other) > stringLength(*chosen) : !widens(right, left)) {
      chosen = other;
    }
  }
  return chosen;
}

// REF(x), a reference to the variable x.
vel::SymbolDataType* Calls::callReference(Call& call) {
  ASTNode* const list = parameterList(call);
  if (list == nullptr || list->leavesCount() != 1 ||
      list->leaf(0)->type() != vel::ASTType::Expression) {
    say(call, message::kUnknownName, TreeBuilder::source(*call.leaf(0)));
    return nullptr;
  }
  const Expr& operand = parts_.expressions.analyseLeaf(*list, 0);
  if (operand.dataType == nullptr) return nullptr;
  if (!parts_.expressions.hasAddress(operand) || !isWritable(operand)) {
    say(operand, message::kNoAddress, TreeBuilder::source(operand));
    return nullptr;
  }
  call.givesAddress = true;
  call.accepted = true;
  call.dataType = services_.symbols.pointerType(operand.dataType, true);
  call.setBasicType(BasicDataType::Pointer);
  return call.dataType;
}

// The checks that operators leave to the host.
void Calls::checkOperands(const Call& call) {
  const ASTNode* const list = parameterList(call);
  if (list == nullptr || list->leavesCount() == 0) return;
  vel::HeapAddress address;
  const std::string_view name = TreeBuilder::source(*list->leaf(0));
  if (call.traits()->has(OperatorTraits::kGivesAddress) && leavesNameToOperator(call, 0) &&
      !services_.memory.parse(name, address)) {
    const bool known = services_.symbols.find(name, {}, Symbol::All) != nullptr;
    say(*list->leaf(0), known ? message::kNotAValue : message::kUnknownName, name);
  }
  const auto& first = static_cast<const Expr&>(*list->leaf(0));
  const auto* const variable = asVariable(first.symbol);
  if (call.traits()->has(OperatorTraits::kGivesAddress) && variable != nullptr &&
      first.kind == ExprKind::Variable && variable->placedByInstance && variable->isDeviceBit()) {
    say(first, message::kNoAddress, name);
  }
  checkChoice(call);
  checkConverted(call, static_cast<const Expr&>(*list->leaf(0)));
  // The check of a numeric function covers its first operand only.
  for (int i = 1; call.traits()->family == OperatorFamily::Numeric && i < list->leavesCount();
       ++i) {
    const auto& operand = static_cast<const Expr&>(*list->leaf(i));
    const BasicDataType type = typeOf(operand);
    if (type != BasicDataType::None && !isNumber(type)) {
      say(operand, message::kOperandType, call.op()->name, describe(operand));
    }
  }
}

// A generic conversion accepts every operand, but chooses its C function by the elementary type of
// the operand, so that it must have one.
void Calls::checkConverted(const Call& call, const Expr& operand) {
  const OperatorTraits& traits = *call.traits();
  const bool compares = traits.result == OperatorTraits::Result::ComparedTo0;
  if (!compares && traits.result != OperatorTraits::Result::Converted) return;
  const Type* const type = operand.dataType;
  bool converts = type != nullptr && elementaryType(type->dataType()) != nullptr;
  if (compares) {
    converts = !isComposite(type);
  } else if (!traits.has(OperatorTraits::kGivesText) && type != nullptr &&
             type->dataType() == BasicDataType::Pointer) {
    converts = true;
  }
  if (!converts) say(operand, message::kOperandType, call.op()->name, displayName(type));
}

// C cannot compare arrays, structures and strings, and can choose only among those of one type.
void Calls::checkChoice(const Call& call) {
  if (!call.traits()->chooses()) return;
  const ASTNode& list = *parameterList(call);
  const bool compares = call.traits()->has(OperatorTraits::kCompares);
  const int firstChoice = call.traits()->firstChoice;
  const auto& first = static_cast<const Expr&>(*list.leaf(firstChoice));
  const BasicDataType kind = typeOf(first);
  for (int i = firstChoice; i < list.leavesCount(); ++i) {
    const auto& value = static_cast<const Expr&>(*list.leaf(i));
    const BasicDataType own = typeOf(value);
    const bool derived = isComposite(value.dataType) || isComposite(first.dataType);
    const bool same = derived ? value.dataType == first.dataType : own == kind;
    const bool onlySame = derived || isText(own) || isText(kind);
    const bool pointer = own == BasicDataType::Pointer;
    const bool refused = onlySame ? compares || !same : pointer != (kind == BasicDataType::Pointer);
    if (!refused) continue;
    say(value, message::kOperandType, call.op()->name, describe(value));
    return;
  }
}

// `SIZEOF(STRING[n])`: resolves the type, and with it the length.
void Calls::analyseOperandType(Call& call) {
  ASTNode* const spec = call.leaf(1);
  if (spec != nullptr && spec->type() != vel::ASTType::ParameterList) parts_.types.resolve(*spec);
}

// True of an operand that the operator looks up itself, since it need not name a variable: SIZEOF
// also takes the name of a type.
bool Calls::leavesNameToOperator(const Call& call, int index) const {
  const ASTNode* const operand = parameterList(call)->leaf(index);
  if (index >= call.traits()->namedOperands || operand->type() != vel::ASTType::Expression) {
    return false;
  }
  const auto& expr = static_cast<const Expr&>(*operand);
  const std::string_view name = TreeBuilder::source(expr);
  return expr.kind == ExprKind::Variable && parts_.names.variableNamed(name) == nullptr &&
         !parts_.names.isAddress(name);
}

// Declares the hidden variable in which an edge detection keeps its operand between scans: one for
// each distinct text of a call in a unit, in device memory for programs that have no instances.
void Calls::declareEdgeState(const Call& call) {
  if (!call.traits()->has(OperatorTraits::kRemembers) || context_.unit == nullptr) return;
  const std::string name = edgeStateName(call);
  if (context_.unit->variable(name) != nullptr) return parts_.doubts.judgeSharedState(call);
  auto cell = std::make_unique<VarSymbol>(name, services_.symbols.elementary(BasicDataType::Bool),
                                          Role::EdgeState, context_.unit);
  if (context_.unit->type() == vel::POUType::Program && !context_.unit->instantiated) {
    cell->keepAt(services_.memory.allocateState());
  }
  context_.unit->addVariable(std::move(cell));
}

bool Calls::orderArguments(Call& call, const std::function<int(std::string_view)>& positionOf) {
  ASTNode* const list = parameterList(call);
  const int count = list != nullptr ? list->leavesCount() : 0;
  const int named = list != nullptr ? namedArguments(*list) : 0;
  if (named == 0) return true;
  const std::string_view name = TreeBuilder::source(*call.leaf(0));
  std::vector<ASTNode*> ordered(static_cast<std::size_t>(count), nullptr);
  for (int i = 0; i < count; ++i) {
    const bool isNamed = kindOf(*list->leaf(i)) == NodeKind::Argument;
    if (!isNamed && i >= count - named) {
      say(*list->leaf(i), message::kMixedArguments, name);
      return false;
    }
    if (!isNamed) ordered[static_cast<std::size_t>(i)] = list->leaf(i);
  }
  for (int i = count - named; i < count; ++i) {
    const auto& argument = static_cast<const Argument&>(*list->leaf(i));
    const char* const formal = static_cast<const Text&>(*argument.leaf(0)).text();
    const int position = argument.output ? -1 : positionOf(formal);
    if (position < 0 || position >= count) {
      Remarks& said = say(argument, message::kUnknownParameter, name, formal);
      if (call.op() != nullptr) {
        parts_.suggestions.addInput(said, *argument.leaf(0), formal, call.op()->name);
      }
      return false;
    }
    ASTNode*& place = ordered[static_cast<std::size_t>(position)];
    if (place != nullptr) {
      say(argument, message::kArgumentTwice, formal);
      return false;
    }
    place = argument.leaf(1);
  }
  tree_.setLeaves(*list, ordered);
  return true;
}

vel::SymbolDataType* Calls::callFunction(Call& call) {
  UnitSymbol& function = *call.function();
  // An error in the result type has been reported at the declaration.
  call.accepted = function.result == nullptr || function.result->dataType() != nullptr;
  takeEnabling(call, &function);
  analyseArguments(call, function);
  return function.result != nullptr ? function.result->dataType() : nullptr;
}

// Makes a Variable of the name, so that callInstance() deals with expressions only.
Expr* Calls::nameOfInstance(const Call& call) {
  Expr* const access = tree_.make<Expr>(ExprKind::Variable);
  TreeBuilder::setSpan(*access, call.leaf(0)->pos(), TreeBuilder::source(*call.leaf(0)));
  return access;
}

vel::SymbolDataType* Calls::callInstance(Call& call) {
  parts_.expressions.analyse(*call.instance);
  const Expr& callee = *call.instance;
  const auto* const instance = dynamic_cast<const InstanceType*>(callee.dataType);
  if (instance != nullptr) {
    call.accepted = true;
    takeEnabling(call, instance->unit);
    analyseArguments(call, *instance->unit);
  } else if (callee.dataType != nullptr) {
    say(call, message::kNotCallable, TreeBuilder::source(callee));
  }
  return nullptr;
}

void Calls::analyseArguments(Call& call, UnitSymbol& callee) {
  if (parameterList(call) == nullptr) {
    say(*call.leaf(1), message::kNotAValue, TreeBuilder::source(*call.leaf(1)));
    return;
  }
  parts_.sizes.countCall(callee);
  ASTNode* const list = parameterList(call);
  for (const Binding& binding : bindArguments(call, callee)) {
    const Type* const wanted =
        binding.parameter != nullptr ? binding.parameter->dataType() : nullptr;
    if (binding.named != nullptr) {
      parts_.expressions.analyseLeaf(*binding.node, 1, wanted);
    } else {
      parts_.expressions.analyseLeaf(*list, binding.index, wanted);
    }
  }
  const std::vector<Binding> bindings = bindArguments(call, callee);
  const auto isTooMuch = [](const Binding& binding) {
    return binding.parameter == nullptr && binding.named == nullptr;
  };
  const auto tooMuch = std::find_if(bindings.begin(), bindings.end(), isTooMuch);
  if (tooMuch != bindings.end()) {
    if (context_.mayMiss(&callee)) return;
    say(*tooMuch->node, message::kTooManyArguments, callee.name());
    return;
  }
  std::vector<const VarSymbol*> given;
  bool named = false;
  for (const Binding& binding : bindings) {
    if (named && binding.named == nullptr) {
      say(*binding.node, message::kMixedArguments, callee.name());
      break;
    }
    named = binding.named != nullptr;
    if (binding.parameter == nullptr) {
      if (context_.mayMiss(&callee)) continue;
      const std::string_view formal = TreeBuilder::source(*binding.node->leaf(0));
      Remarks& said = say(*binding.node, message::kUnknownParameter, callee.name(), formal);
      parts_.suggestions.addParameter(said, *binding.node->leaf(0), formal, callee);
      continue;
    }
    if (std::find(given.begin(), given.end(), binding.parameter) != given.end()) {
      say(*binding.node, message::kArgumentTwice, binding.parameter->name());
      continue;
    }
    given.push_back(binding.parameter);
    const std::size_t first = messages_.count();
    checkArgument(binding, callee);
    if (!callee.standard && binding.parameter->declared != nullptr) {
      messages_.note(first, rangeOf(*binding.parameter->declared),
                     "the parameter is declared here");
    }
  }
  // One of an unknown name is probably meant for a parameter that is missing.
  const auto isUnknown = [](const Binding& binding) { return binding.parameter == nullptr; };
  if (std::any_of(bindings.begin(), bindings.end(), isUnknown)) return;
  for (const auto& variable : callee.variables()) {
    const bool needed = variable->indirect && !variable->reference;
    const bool missing =
        needed && std::find(given.begin(), given.end(), variable.get()) == given.end();
    if (!missing || context_.mayMiss(&callee)) continue;
    Remarks& said = variable->role == Role::InOut
                        ? say(call, message::kInOutMissing, variable->name(), callee.name())
                        : say(call, message::kTooFewArguments, callee.name());
    if (!callee.standard) said.note(rangeOf(*variable->declared), "the parameter is declared here");
  }
}

void Calls::checkArgument(const Binding& binding, const UnitSymbol& callee) {
  const VarSymbol& parameter = *binding.parameter;
  const bool output = parameter.role == Role::Output;
  if (binding.named != nullptr && binding.named->output != output) {
    say(*binding.node, message::kUnknownParameter, callee.name(), parameter.name());
    return;
  }
  if (output) {
    const BasicDataType type =
        parameter.dataType() != nullptr ? parameter.dataType()->dataType() : BasicDataType::None;
    const bool negated = binding.named != nullptr && binding.named->negated;
    if (negated && type != BasicDataType::Bool && !isInteger(type)) {
      say(*binding.node, message::kOperandType, "NOT", displayName(parameter.dataType()));
    }
    if (parts_.expressions.requireWritable(*binding.value)) {
      parts_.assignments.check(binding.value->dataType, parameter.dataType(), *binding.value);
    }
  } else if (parameter.role == Role::InOut) {
    requirePassable(binding);
  } else if (asOpenArray(parameter.dataType()) != nullptr) {
    requirePassable(binding);
  } else if (parameter.reference) {
    parts_.assignments.checkBound(parameter.name(), parameter.dataType(), *binding.value);
  } else {
    parts_.assignments.check(parameter.dataType(), binding.value->dataType, *binding.value);
  }
}

// An in-out parameter is passed by reference: its argument must be a writable variable of the same
// type.
void Calls::requirePassable(const Binding& binding) {
  const Expr& value = *binding.value;
  const Type* const wanted = binding.parameter->dataType();
  if (value.dataType == nullptr || wanted == nullptr) return;
  const bool passable =
      parts_.expressions.hasAddress(value) && isPassable(*value.dataType, *wanted);
  if (binding.parameter->role == Role::Input) {
    if (passable) return;
    say(value, message::kNotBindable, binding.parameter->name(), TreeBuilder::source(value),
        displayName(wanted));
  } else if (!passable || isReadOnly(value)) {
    say(value, message::kNotPassable, TreeBuilder::source(value), binding.parameter->name(),
        displayName(wanted));
  }
}

}  // namespace refhost
