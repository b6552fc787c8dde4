// Calls of operators that choose among their operands or pass one on.
#include "refhost/operator_calls.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;

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

}  // namespace

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

}  // namespace refhost
