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

bool isPointer(const Expr& value) { return typeOf(value) == BasicDataType::Pointer; }

// False of a value of a derived type and one of another type among which an operator cannot choose.
// Numbers meet an enumeration where they need not be compared.
bool mayMeet(const Expr& a, const Expr& b, bool compares) {
  if (a.dataType == b.dataType) return true;
  if (isComposite(a.dataType) || isComposite(b.dataType)) return false;
  if (isPointer(a) != isPointer(b)) return false;
  const bool both = isEnumeration(a.dataType) && isEnumeration(b.dataType);
  const bool one = isEnumeration(a.dataType) || isEnumeration(b.dataType);
  return !one || (!both && !compares && isInteger(typeOf(a)) && isInteger(typeOf(b)));
}

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

// The enumeration of the values among which the operator chooses; null if they are of none, and for
// numbers too unless the enumeration is wanted.
vel::SymbolDataType* Calls::chosenEnumeration(const Call& call, const Type* wanted) {
  Type* found = nullptr;
  bool all = true;
  for (int i = call.traits()->firstChoice;
       call.traits()->chooses() && i < call.parameters()->leavesCount(); ++i) {
    Type* const type = static_cast<const Expr*>(call.parameters()->leaf(i))->dataType;
    all = all && isEnumeration(type);
    if (isEnumeration(type)) found = type;
  }
  return all || found == wanted ? found : nullptr;
}

// True if `named`, the result type that the operator reports, cannot hold the choice: that is the
// target's type, for which the operator has checked only one of two values of another type, or the
// integer type of a value between real limits. The host alone knows which pointer holds the other.
bool Calls::choosesBeyond(const Call& call, const Type& named) {
  if (!call.traits()->chooses()) return false;
  const ASTNode& list = *call.parameters();
  const BasicDataType type = typeOf(*list.leaf(call.traits()->firstChoice));
  const bool compares = call.traits()->has(OperatorTraits::kCompares);
  bool same = true;
  for (int i = call.traits()->firstChoice; i < list.leavesCount(); ++i) {
    const BasicDataType other = typeOf(*list.leaf(i));
    if (compares && isFloat(other) && isInteger(named.dataType())) return true;
    same = same && other == type;
  }
  return same && (type == BasicDataType::Pointer || !widens(type, named.dataType()));
}

// The type that holds each of the values among which the operator chooses.
vel::SymbolDataType* Calls::chosenType(const Call& call) {
  const ASTNode& list = *call.parameters();
  const int first = call.traits()->firstChoice;
  Type* chosen = static_cast<const Expr*>(list.leaf(first))->dataType;
  for (int i = first + 1; i < list.leavesCount(); ++i) {
    Type* const other = static_cast<const Expr*>(list.leaf(i))->dataType;
    const BasicDataType left = valueType(chosen);
    const BasicDataType right = valueType(other);
    if (isNumber(left) && isNumber(right)) {
      const BasicDataType common = commonNumber(left, right);
      const bool adapted = literalOf(*list.leaf(first)) != nullptr;
      if (common == right && (adapted || common != left)) chosen = other;
      if (common != right && common != left) chosen = services_.symbols.elementary(common);
    } else if (left == BasicDataType::Pointer && right == left) {
      // That of a POINTER TO, which may hold any address.
      const auto* const before = dynamic_cast<const PointerType*>(chosen);
      const auto* const pointer = dynamic_cast<const PointerType*>(other);
      if (before == nullptr || pointer == nullptr) continue;
      const bool wider = pointer->target != nullptr && !pointer->isReference;
      if (before->target == nullptr || wider) chosen = other;
    } else if (isText(left) ? stringLength(*other) > stringLength(*chosen) : !widens(right, left)) {
      chosen = other;
    }
  }
  return chosen;
}

// Reports operands of derived types that the operator does not take. Its own message could not
// name their types.
bool Calls::refusesDerived(const Call& call) {
  const ASTNode& list = *call.parameters();
  const OperatorTraits& traits = *call.traits();
  const bool computes =
      traits.result == OperatorTraits::Result::Computed && traits.family != OperatorFamily::Other;
  const bool compares = traits.has(OperatorTraits::kCompares);
  if (compares && refusesLimited(call)) return true;
  const Expr* first = nullptr;
  for (int i = traits.firstChoice; (computes || traits.chooses()) && i < list.leavesCount(); ++i) {
    const auto& value = static_cast<const Expr&>(*list.leaf(i));
    if (leavesNameToOperator(call, i)) continue;
    if (first == nullptr) first = &value;
    const bool derived = isComposite(value.dataType) || isEnumeration(value.dataType) ||
                         (isPointer(value) && traits.family == OperatorFamily::Numeric);
    if (computes ? derived : compares && isComposite(value.dataType)) {
      say(value, message::kOperandType, call.op()->name, describe(value));
    } else if (!computes && !mayMeet(*first, value, compares)) {
      say(call, message::kOperandTypes, call.op()->name, describe(*first), describe(value));
    } else {
      continue;
    }
    return true;
  }
  return false;
}

// Reports an input IN between two numbers that is none: the operator would report the numbers.
bool Calls::refusesLimited(const Call& call) {
  const int position = call.traits()->position("IN");
  const ASTNode& list = *call.parameters();
  if (position != 1 || list.leavesCount() != 3) return false;
  const auto& low = static_cast<const Expr&>(*list.leaf(0));
  const auto& input = static_cast<const Expr&>(*list.leaf(1));
  const bool bounded = isNumber(typeOf(low)) && isNumber(typeOf(*list.leaf(2)));
  if (!bounded || elementaryType(typeOf(input)) == nullptr || isNumber(typeOf(input))) return false;
  say(input, message::kOperandTypes, call.op()->name, describe(input), describe(low));
  return true;
}

// The same for what an operator passes on to a place of the type `wanted`.
bool Calls::refusesPassed(const Call& call, const Type* wanted) {
  const ASTNode& list = *call.parameters();
  const bool passes = call.traits()->result == OperatorTraits::Result::Passed;
  if (!passes || wanted == nullptr || list.leavesCount() != 1) return false;
  const auto& value = static_cast<const Expr&>(*list.leaf(0));
  if (!isComposite(value.dataType) || parts_.assignments.accepts(wanted, value)) return false;
  parts_.assignments.check(wanted, value.dataType, value);
  return true;
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

// C cannot compare strings, and can choose only among those of one type. It would compare BOOLs
// with numbers.
void Calls::checkChoice(const Call& call) {
  if (!call.traits()->chooses()) return;
  const ASTNode& list = *call.parameters();
  const bool compares = call.traits()->has(OperatorTraits::kCompares);
  const int firstChoice = call.traits()->firstChoice;
  const auto& first = static_cast<const Expr&>(*list.leaf(firstChoice));
  const BasicDataType kind = typeOf(first);
  for (int i = firstChoice; i < list.leavesCount(); ++i) {
    const auto& value = static_cast<const Expr&>(*list.leaf(i));
    const BasicDataType own = typeOf(value);
    if (compares && isNumber(own) != isNumber(kind)) {
      say(value, message::kOperandTypes, call.op()->name, describe(first), describe(value));
      return;
    }
    const bool texts = isText(own) || isText(kind);
    if (!texts || (!compares && own == kind)) continue;
    if (compares) {
      say(value, message::kOperandType, call.op()->name, describe(value));
    } else {
      const bool literal = isUntypedNumber(first);
      const Expr& wrong = literal ? first : value;
      say(wrong, message::kCannotConvert, describe(wrong),
          displayName((literal ? value : first).dataType));
    }
    return;
  }
}

// What an operator selects must be assignable to the type of its result. Arrays, structures,
// strings and pointers have been checked.
void Calls::checkSelected(const Call& call) {
  const Type* const result = call.dataType;
  const ASTNode& list = *call.parameters();
  const auto isChecked = [](const Type* type) {
    return isComposite(type) || isText(valueType(type)) ||
           valueType(type) == BasicDataType::Pointer;
  };
  if (isChecked(result)) return;
  for (int i = call.traits()->firstChoice; i < list.leavesCount(); ++i) {
    const auto& value = static_cast<const Expr&>(*list.leaf(i));
    if (!isChecked(value.dataType)) parts_.assignments.check(result, value.dataType, value);
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
