// Calls of operators of the plugin.
#include "refhost/operator_calls.h"

#include <vector>

#include "core/operator.h"
#include "hostkit/edge_state.h"
#include "hostkit/operator_inputs.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

// True if an untyped 0 or 1 follows the operand of type `before` rather than that of type `next`,
// of which only one is a BOOL. A BOOL is the fault of a comparison, and the result of a choice.
bool outranks(const OperatorTraits& traits, const vel::SymbolDataType* before,
              const vel::SymbolDataType* next) {
  const bool flag = valueType(next) == BasicDataType::Bool;
  return (valueType(before) == BasicDataType::Bool) != flag &&
         traits.has(OperatorTraits::kCompares) == flag;
}

}  // namespace

vel::SymbolDataType* Calls::callOperator(Call& call, const Type* wanted) {
  const std::size_t first = messages_.count();
  if (call.traits()->has(OperatorTraits::kNeedsCapitals)) requireCapitals(call);
  takeEnabling(call, nullptr);
  const auto positionOf = [&](std::string_view formal) {
    return operatorInput(services_, call.op()->name, formal);
  };
  if (!orderArguments(call, positionOf)) return nullptr;
  ASTNode* const list = call.parameters();
  if (list == nullptr) analyseOperandType(call);
  if (list != nullptr && !analyseOperands(call, *list, wanted)) {
    // The error in the operand has been reported, maybe at an earlier use of it.
    if (!hasErrorFrom(0)) say(call, message::kNotAccepted, TreeBuilder::source(*call.leaf(0)));
    return nullptr;
  }
  if (list != nullptr && (refusesDerived(call) || refusesPassed(call, wanted))) return nullptr;
  std::string resultType;
  const std::size_t before = messages_.count();
  // Operators choose among enumerations as among numbers.
  services_.enumerationsAreNumbers = call.traits()->chooses();
  call.accepted = callGuarded(*call.op(), call, messages_, [&] {
    return call.op()->check(&services_, &call, messages_.records(), resultType, context_.unitName);
  });
  services_.enumerationsAreNumbers = false;
  messages_.setRanges(before, call);
  suggestOperand(call, before);
  parts_.assignments.noteOperatorCheck(call, before);
  if (call.accepted && hasErrorFrom(before)) {
    call.accepted = false;
    return nullptr;
  }
  if (!call.accepted) {
    if (!hasErrorFrom(first)) sayNotAccepted(call);
    return nullptr;
  }
  declareEdgeState(call);
  const std::size_t beforeOperands = messages_.count();
  call.dataType = resultOf(call, services_.symbols.dataType(resultType), wanted);
  checkOperands(call);
  if (call.traits()->selects() || isEnumeration(call.dataType)) checkSelected(call);
  call.accepted = !hasErrorFrom(beforeOperands);
  if (!call.accepted) return nullptr;
  parts_.doubts.judgeCall(call);
  return call.dataType;
}

// SIZEOF refuses functions and programs without a message.
void Calls::sayNotAccepted(const Call& call) {
  const ASTNode* const list = call.parameters();
  if (list != nullptr && list->leavesCount() > 0 && leavesNameToOperator(call, 0)) {
    say(*list->leaf(0), message::kNotAValue, TreeBuilder::source(*list->leaf(0)));
  } else {
    say(call, message::kNotAccepted, TreeBuilder::source(*call.leaf(0)));
  }
}

void Calls::requireCapitals(const Call& call) {
  const ASTNode& name = *call.leaf(0);
  const std::string_view written = TreeBuilder::source(name);
  if (written == call.op()->name) return;
  say(name, message::kCapitals, written).fix(rangeOf(name), call.op()->name);
}

// False when an operand has no type. What an operator passes on may have the type that is wanted of
// the result, and it has that of the other values among which the operator chooses. A numeric
// function computes in the type of its first operand.
bool Calls::analyseOperands(const Call& call, ASTNode& list, const Type* wanted) {
  bool known = true;
  const Type* const result = wanted;
  const OperatorTraits& traits = *call.traits();
  const bool passes = traits.chooses() || traits.result == OperatorTraits::Result::Passed;
  const bool computes = traits.family == OperatorFamily::Numeric && isFloat(valueType(wanted));
  bool settled = false;  // an operand has set `wanted`
  const auto analyse = [&](int i) {
    const bool passed = computes || (passes && i >= traits.firstChoice);
    Expr& operand = parts_.expressions.analyseLeaf(list, i, passed ? wanted : nullptr);
    known = known && operand.dataType != nullptr;
    if (operand.dataType == nullptr) return;
    if (passed && (!settled || !outranks(traits, wanted, operand.dataType))) {
      wanted = wantedBeside(operand.dataType, wanted);
      settled = true;
    }
    if (traits.family == OperatorFamily::Numeric) widenLowest(operand);
    if (!isAccess(operand.kind)) return;
    services_.symbols.addAccess(context_.unitName, std::string(TreeBuilder::source(operand)),
                                operand.dataType);
  };
  std::vector<int> open;
  for (int i = 0; i < list.leavesCount(); ++i) {
    if (leavesNameToOperator(call, i)) {
      // It may be that of a function block of the library.
      parts_.declarations.unitNamed(std::string(TreeBuilder::source(*list.leaf(i))));
      continue;
    }
    if (passes && i >= traits.firstChoice && parts_.names.isOpen(*list.leaf(i))) {
      open.push_back(i);
    } else {
      analyse(i);
    }
  }
  for (const int i : open) analyse(i);
  if (passes && known) adaptLiterals(call, list, result);
  return known;
}

// The type of an accepted call. `named` is the result type that the operator reports, null for
// none: operators cannot name derived types, so the host infers those from the operands.
vel::SymbolDataType* Calls::resultOf(Call& call, Type* named, const Type* wanted) {
  const ASTNode* const list = call.parameters();
  if (list == nullptr || list->leavesCount() == 0) return named;
  const auto operand = [list](int index) { return static_cast<const Expr*>(list->leaf(index)); };
  const OperatorTraits& traits = *call.traits();
  if (Type* const enumeration = chosenEnumeration(call, wanted)) return enumeration;
  if (traits.has(OperatorTraits::kGivesAddress)) {
    call.givesAddress = true;
    Type* const target = operand(0)->dataType;
    return target != nullptr ? services_.symbols.pointerType(target, false) : named;
  }
  if (named != nullptr) return choosesBeyond(call, *named) ? chosenType(call) : named;
  if (traits.result == OperatorTraits::Result::Passed) return operand(0)->dataType;
  if (!traits.givesValue()) return nullptr;
  return traits.chooses() ? chosenType(call) : services_.symbols.elementary(BasicDataType::Bool);
}

// The checks that operators leave to the host.
void Calls::checkOperands(const Call& call) {
  const ASTNode* const list = call.parameters();
  if (list == nullptr || list->leavesCount() == 0) return;
  vel::HeapAddress address;
  const std::string_view name = TreeBuilder::source(*list->leaf(0));
  if (call.traits()->has(OperatorTraits::kGivesAddress) && leavesNameToOperator(call, 0) &&
      !services_.memory.parse(name, address)) {
    const bool known = services_.symbols.find(name, {}, Symbol::All) != nullptr;
    context_.noteMissing(name);
    Remarks& said = say(*list->leaf(0), known ? message::kNotAValue : message::kUnknownName, name);
    const Seeking seeking(context_, Sought::Place);
    if (!known) parts_.suggestions.addName(said, *list->leaf(0), name, nullptr);
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
      say(operand, message::kCannotConvert, describe(operand), displayName(call.dataType));
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

// `SIZEOF(STRING[n])`: resolves the type, and with it the length.
void Calls::analyseOperandType(Call& call) {
  ASTNode* const spec = call.leaf(1);
  if (spec != nullptr && spec->type() != vel::ASTType::ParameterList) parts_.types.resolve(*spec);
}

// True of an operand that the operator looks up itself, since it need not name a variable: SIZEOF
// also takes the name of a type.
bool Calls::leavesNameToOperator(const Call& call, int index) const {
  if (index >= call.traits()->namedOperands) return false;
  const ASTNode* const operand = call.parameters()->leaf(index);
  if (operand->type() != vel::ASTType::Expression) return false;
  const auto& expr = static_cast<const Expr&>(*operand);
  const std::string_view name = TreeBuilder::source(expr);
  return expr.kind == ExprKind::Variable && parts_.names.variableNamed(name) == nullptr &&
         !parts_.names.isAddress(name);
}

// Adds what may have been meant to the first error from index `before` on, which the operator has
// reported on the name of its operand.
void Calls::suggestOperand(const Call& call, std::size_t before) {
  if (!hasErrorFrom(before)) return;
  const ASTNode* const list = call.parameters();
  const bool named = list != nullptr && list->leavesCount() > 0 && leavesNameToOperator(call, 0);
  if (!named) return;
  const ASTNode& operand = *list->leaf(0);
  const std::string_view name = TreeBuilder::source(operand);
  if (services_.symbols.find(name, {}, Symbol::All) != nullptr) return;
  parts_.suggestions.addOperand(messages_.remarksOn(before), operand, name);
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
  ASTNode* const list = call.parameters();
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
      const void* const owner = call.op() != nullptr ? static_cast<const void*>(call.op())
                                                     : static_cast<const void*>(call.standard());
      Remarks* const said = sayUnknownPart(rangeOf(*argument.leaf(0)), message::kUnknownParameter,
                                           owner, formal, name, formal);
      if (said != nullptr) parts_.suggestions.addInput(*said, call, argument);
      return false;
    }
    ASTNode*& place = ordered[static_cast<std::size_t>(position)];
    if (place != nullptr) {
      sayTwice(argument, formal, *place);
      return false;
    }
    place = argument.leaf(1);
  }
  tree_.setLeaves(*list, ordered);
  return true;
}

}  // namespace refhost
