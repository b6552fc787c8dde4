// Which values of derived types may be given to which.
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"

namespace refhost {

namespace {

bool isPointer(const vel::SymbolDataType& type) {
  return type.dataType() == BasicDataType::Pointer;
}

// Holds every pointer.
bool isWide(BasicDataType type) {
  return type == BasicDataType::LInt || type == BasicDataType::ULInt;
}

// An address that ADR gives, or one some bytes from there.
bool isAdrCall(const vel::ASTNode& source) {
  if (kindOf(source) == NodeKind::Invocation) {
    return static_cast<const Call&>(source).givesAddress;
  }
  if (source.type() != vel::ASTType::Expression) return false;
  const auto& expr = static_cast<const Expr&>(source);
  if (expr.kind == ExprKind::Call) return isAdrCall(*expr.leaf(0));
  const bool step = expr.kind == ExprKind::Add || expr.kind == ExprKind::Subtract;
  return step && (isAdrCall(*expr.leaf(0)) || isAdrCall(*expr.leaf(1)));
}

}  // namespace

// False when both types are elementary: then nothing has been judged.
bool Assignments::judgeDerived(const Type& to, const Type& from, const vel::ASTNode& source,
                               vel::TextLocation at) {
  judgeRange(to, source, at);
  const bool derived =
      elementaryType(to.dataType()) == nullptr || elementaryType(from.dataType()) == nullptr;
  if (!derived) return false;
  if (&to == &from) return true;
  if (isPointer(to) || isPointer(from)) {
    judgePointer(to, from, source, at);
  } else if (dynamic_cast<const EnumType*>(&to) != nullptr && isInteger(from.dataType())) {
    report(messages_, at, message::kToEnumeration, {displayName(&to)});
  } else if (const auto* const value = dynamic_cast<const EnumType*>(&from);
             value != nullptr && isNumber(to.dataType())) {
    const bool constant = constantInteger(source).has_value();
    if (!constant) judge(&to, value->base, source, at);
  } else {
    report(messages_, at, message::kCannotConvert, {displayName(&from), displayName(&to)});
  }
  return true;
}

// A constant given to a subrange must lie in it; other values are the program's care.
void Assignments::judgeRange(const Type& to, const vel::ASTNode& source, vel::TextLocation at) {
  const auto* const subrange = dynamic_cast<const SubrangeType*>(&to);
  const auto value = subrange != nullptr ? constantInteger(source) : std::nullopt;
  if (!value || (*value >= subrange->range.low && *value <= subrange->range.high)) return;
  report(messages_, at, message::kOutOfSubrange,
         {std::to_string(*value), std::to_string(subrange->range.low),
          std::to_string(subrange->range.high)});
}

// A POINTER TO holds any address, a REF_TO only that of a variable of its target type.
void Assignments::judgePointer(const Type& to, const Type& from, const vel::ASTNode& source,
                               vel::TextLocation at) {
  const auto* const target = dynamic_cast<const PointerType*>(&to);
  const auto* const value = dynamic_cast<const PointerType*>(&from);
  const bool strict = target != nullptr && target->isReference;
  const MessageFormat* format = &message::kCannotConvert;
  if (target != nullptr && value != nullptr) {
    if (value->target == nullptr || value->target == target->target) return;
    if (!strict && isAdrCall(source)) return;
    if (!strict) format = &message::kPointerTarget;
  } else if (target != nullptr && isInteger(from.dataType()) && !strict) {
    if (isWide(from.dataType()) || constantInteger(source) == 0) return;
    format = &message::kPointerTarget;
  } else if (value != nullptr && isInteger(to.dataType())) {
    const bool addressNumber = to.dataType() == BasicDataType::UDInt;
    // The operator itself calls an address a UDINT.
    if (isWide(to.dataType()) || (addressNumber && isAdrCall(source))) return;
    if (addressNumber) {
      report(messages_, at, message::kPointerBits, {displayName(&to)});
      return;
    }
  }
  report(messages_, at, *format, {displayName(&from), displayName(&to)});
}

}  // namespace refhost
