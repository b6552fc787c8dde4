// Assignments between derived types.
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"

namespace refhost {

namespace {

bool isPointer(const vel::SymbolDataType& type) {
  return type.dataType() == BasicDataType::Pointer;
}

bool holdsPointer(BasicDataType type) {
  return type == BasicDataType::LInt || type == BasicDataType::ULInt;
}

bool isStep(const vel::ASTNode& source) {
  if (source.type() != vel::ASTType::Expression) return false;
  const ExprKind kind = static_cast<const Expr&>(source).kind;
  return kind == ExprKind::Add || kind == ExprKind::Subtract;
}

// A call of ADR, or a sum or difference with one.
bool isAdrCall(const vel::ASTNode& source) {
  if (kindOf(source) == NodeKind::Invocation) {
    const auto& call = static_cast<const Call&>(source);
    return call.givesAddress && call.op() != nullptr;
  }
  if (source.type() != vel::ASTType::Expression) return false;
  const auto& expr = static_cast<const Expr&>(source);
  if (expr.kind == ExprKind::Call) return isAdrCall(*expr.leaf(0));
  return isStep(source) && (isAdrCall(*expr.leaf(0)) || isAdrCall(*expr.leaf(1)));
}

}  // namespace

// Returns false when both types are elementary: then only the range has been checked.
bool Assignments::checkDerived(const Type& to, const Type& from, const vel::ASTNode& source,
                               const SourceRange& at) {
  checkRange(to, source, at);
  const bool derived =
      elementaryType(to.dataType()) == nullptr || elementaryType(from.dataType()) == nullptr;
  if (!derived) return false;
  if (&to == &from) return true;
  if (isPointer(to) || isPointer(from)) {
    checkPointer(to, from, source, at);
  } else if (dynamic_cast<const EnumType*>(&to) != nullptr && isInteger(from.dataType())) {
    const std::string name = displayName(&to);
    messages_.report(at, message::kToEnumeration,
                     {isAnonymous(to) ? name.substr(name.find('(')) : name});
  } else if (const auto* const value = dynamic_cast<const EnumType*>(&from);
             value != nullptr && isNumber(to.dataType())) {
    const bool constant = constantInteger(source).has_value();
    if (!constant) check(&to, value->base, source, at);
  } else {
    refuse(to, from, source, at);
  }
  return true;
}

// A constant assigned to a subrange must lie in it. Other values are not checked, not even at run
// time.
void Assignments::checkRange(const Type& to, const vel::ASTNode& source, const SourceRange& at) {
  const auto* const subrange = dynamic_cast<const SubrangeType*>(&to);
  const auto value = subrange != nullptr ? constantInteger(source) : std::nullopt;
  if (!value || (*value >= subrange->range.low && *value <= subrange->range.high)) return;
  messages_.report(at, message::kOutOfSubrange,
                   {textOf(*value), textOf(subrange->range.low), textOf(subrange->range.high)});
}

// NULL and 0 unbind the reference.
void Assignments::checkBound(std::string_view name, const Type* to, const Expr& source) {
  const Type* const from = source.dataType;
  if (to == nullptr || from == nullptr || isNull(source)) return;
  if (parts_.expressions.hasAddress(source) && isWritable(source) && sameType(*from, *to)) return;
  say(source, message::kNotBindable, name, vel::TreeBuilder::source(source), displayName(to));
}

// A POINTER TO may hold any address, a REF_TO only that of a variable of its target type, so that
// it takes no computed address and no other pointer's.
void Assignments::checkPointer(const Type& to, const Type& from, const vel::ASTNode& source,
                               const SourceRange& at) {
  const auto* const target = dynamic_cast<const PointerType*>(&to);
  const auto* const value = dynamic_cast<const PointerType*>(&from);
  const bool strict = target != nullptr && target->isReference;
  const MessageFormat* format = &message::kCannotConvert;
  if (target != nullptr && value != nullptr) {
    const bool same = value->target == target->target;
    if (value->target == nullptr || (!strict && (same || isAdrCall(source)))) return;
    if (same && !isStep(source) && (value->isReference || isAdrCall(source))) return;
    if (!strict) format = &message::kPointerTarget;
  } else if (target != nullptr && isInteger(from.dataType()) && !strict) {
    if (holdsPointer(from.dataType()) || constantInteger(source) == 0) return;
    format = &message::kPointerTarget;
  } else if (value != nullptr && isInteger(to.dataType())) {
    const bool addressNumber = to.dataType() == BasicDataType::UDInt;
    // ADR names UDINT as the type of its result.
    if (holdsPointer(to.dataType()) || (addressNumber && isAdrCall(source))) return;
    if (addressNumber) {
      messages_.report(at, message::kPointerBits, {displayName(&to)});
      return;
    }
  }
  if (format == &message::kCannotConvert) return refuse(to, from, source, at);
  messages_.report(at, *format, {describe(source, &from), displayName(&to)});
}

void Assignments::refuse(const Type& to, const Type& from, const vel::ASTNode& source,
                         const SourceRange& at) {
  const std::string first = describe(source, &from);
  const std::string second = displayName(&to);
  Remarks& said = messages_.report(at, message::kCannotConvert, {first, second});
  if (first != second) return;
  said.note(at,
            "each declaration without a name for its type has a type of its own: declare one in "
            "a TYPE for both");
}

}  // namespace refhost
