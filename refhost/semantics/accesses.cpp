// Typing of variables and accesses: members, parts, elements and dereferences.
#include "refhost/prelude/prelude.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/standard_functions.h"
#include "refhost/syntax/part_sizes.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

std::optional<Integer> Expressions::requireConstant(ASTNode& parent, int index) {
  const Seeking seeking(context_, Sought::Constant);
  const std::size_t first = messages_.count();
  const Expr& value = analyseLeaf(parent, index);
  const auto constant = constantInteger(value);
  if (!constant && value.dataType != nullptr && !hasErrorFrom(first) &&
      !context_.mayMiss(context_.unit)) {
    say(value, message::kNotConstant, TreeBuilder::source(value));
  }
  return constant;
}

vel::SymbolDataType* Expressions::typeVariable(Expr& expr, const Type* wanted) {
  const std::string_view name = TreeBuilder::source(expr);
  if (VarSymbol* const variable = parts_.names.variableNamed(name)) {
    expr.symbol = variable;
    ++variable->uses;
    if (variable->doubtful) return nullptr;
    if (!variable->constant) return variable->dataType();
    if (!parts_.constants.compute(*variable)) return nullptr;
    expr.constant = variable->value;
    return variable->dataType();
  }
  NamedValue* value = parts_.names.valueNamed(expr);
  if (value == nullptr && parts_.types.resolveEnumerationOf(expr)) {
    value = parts_.names.valueNamed(expr);
  }
  if (value != nullptr) return typeValue(expr, *value);
  vel::HeapAddress address;
  if (parts_.names.isAddress(name)) {
    services_.memory.parse(name, address);
    return services_.symbols.dataType(addressTypeName(address));
  }
  if (name[0] == '%') {
    parts_.locations.sayInvalid(expr);
  } else if (parts_.names.isAmbiguous(expr)) {
    if (!context_.mayMiss(context_.unit)) say(expr, message::kAmbiguousValue, name, name);
  } else {
    const std::size_t mark = name.find('#');
    if (mark != std::string_view::npos &&
        refusesValue(expr, name.substr(0, mark), name.substr(mark + 1))) {
      return nullptr;
    }
    const bool known = services_.symbols.find(name, {}, Symbol::All) != nullptr ||
                       context_.prelude.unit(name) != nullptr || standardFunction(name) != nullptr;
    // A value that is needed before variables are declared.
    const bool later = !known && parts_.declarations.declaresVariable(name);
    Remarks* const said = sayUnknown(expr,
                                     known   ? message::kNotAValue
                                     : later ? message::kNotConstant
                                             : message::kUnknownName,
                                     name);
    if (said == nullptr || known || later) return nullptr;
    if (mark == std::string_view::npos) {
      parts_.suggestions.addName(*said, expr, name, wanted);
    } else {
      parts_.suggestions.addTypedValue(*said, expr, name);
    }
  }
  return nullptr;
}

// Reports that an enumeration has no value of this name; false for the name of no enumeration.
bool Expressions::refusesValue(const ASTNode& where, std::string_view type, std::string_view name) {
  const auto* const enumeration = dynamic_cast<const EnumType*>(services_.symbols.dataType(type));
  if (enumeration == nullptr) return false;
  if (context_.mayMiss(context_.unit)) return true;
  SourceRange at = rangeOf(where);
  const auto skipped = at.length - static_cast<std::uint32_t>(name.size());
  at = {vel::TextLocation(at.begin.file(), at.begin.offset() + skipped), at.length - skipped};
  Remarks* const said = sayUnknownPart(at, message::kUnknownMember, enumeration, name, type, name);
  if (said != nullptr) parts_.suggestions.addMember(*said, at, name, enumeration);
  return true;
}

vel::SymbolDataType* Expressions::typeValue(Expr& expr, NamedValue& value) {
  expr.symbol = &value;
  const BasicDataType type = valueType(value.dataType());
  if (isInteger(type)) {
    expr.constant = tree_.make<TypedConstant>(static_cast<std::uint64_t>(value.value), type);
  }
  return value.dataType();
}

vel::SymbolDataType* Expressions::typeAccess(Expr& expr) {
  if (expr.kind == ExprKind::Member) return typeMember(expr);
  if (expr.kind == ExprKind::Element) return typeElement(expr);
  if (expr.kind == ExprKind::Dereference) return typeDereference(expr);
  return typePart(expr);
}

// What a member is of.
Expr& Expressions::analyseWhole(Expr& member) {
  const Sought sought = context_.sought;
  const Seeking seeking(context_, sought == Sought::Value   ? Sought::Whole
                                  : sought == Sought::Place ? Sought::WholePlace
                                                            : sought);
  return analyseLeaf(member, 0);
}

vel::SymbolDataType* Expressions::typeMember(Expr& expr) {
  auto& first = static_cast<Expr&>(*expr.leaf(0));
  const char* const name = static_cast<const Text&>(*expr.leaf(1)).text();
  if (first.kind == ExprKind::Variable) {
    // A variable may be named like its type.
    const VarSymbol* const variable = parts_.names.variableNamed(TreeBuilder::source(first));
    const bool hidden = variable != nullptr && memberOf(variable->dataType(), name) != nullptr;
    if (variable == nullptr) parts_.types.resolveEnumerationOf(first);
    NamedValue* const value = hidden ? nullptr : parts_.names.valueNamed(expr);
    if (value != nullptr) return typeValue(expr, *value);
    const std::string_view typeName = TreeBuilder::source(first);
    if (variable == nullptr && refusesValue(*expr.leaf(1), typeName, name)) return nullptr;
  }
  const Expr& base = analyseWhole(expr);
  if (base.dataType == nullptr) return nullptr;
  VarSymbol* const member = memberOf(base.dataType, name);
  // An in-out parameter refers to a variable of the caller, which is valid during the call only.
  const bool visible =
      member != nullptr &&
      (member->role == Role::Member || (member->isParameter() && member->role != Role::InOut) ||
       parts_.tests.sees(*member));
  if (!visible) {
    const auto* const instance = dynamic_cast<const InstanceType*>(base.dataType);
    if (context_.mayMiss(instance != nullptr ? instance->unit : context_.unit)) return nullptr;
    const SourceRange where = rangeOf(*expr.leaf(1));
    Remarks* const said = sayUnknownPart(where, message::kUnknownMember, base.dataType, name,
                                         TreeBuilder::source(base), name);
    if (said != nullptr) parts_.suggestions.addMember(*said, where, name, base.dataType);
    return nullptr;
  }
  expr.symbol = member;
  if (parts_.tests.sees(*member)) ++member->uses;
  return member->dataType();
}

vel::SymbolDataType* Expressions::typePart(Expr& expr) {
  const Expr& base = analyseLeaf(expr, 0);
  if (base.dataType == nullptr || expr.partBits == 0) return nullptr;
  const PartSize& size = partSizeOf(expr.partBits);
  const ElementaryType* const row = elementaryType(base.dataType->dataType());
  if (!isInteger(base.dataType->dataType()) ||
      expr.bitAccessOffset() > 8 * row->size - expr.partBits) {
    const std::string number = std::to_string(expr.bitAccessOffset() / expr.partBits);
    if (expr.partBits == 1) {
      say(expr, message::kBitOutOfRange, number, displayName(base.dataType));
    } else {
      say(expr, message::kPartOutOfRange, std::string("%") + size.letter + number,
          displayName(base.dataType));
    }
    return nullptr;
  }
  return services_.symbols.dataType(size.typeName);
}

// An element of an array, or of the memory from the target of a pointer on.
vel::SymbolDataType* Expressions::typeElement(Expr& expr) {
  const Expr& base = analyseArray(expr, 0);
  const bool fixed = context_.sought == Sought::Constant;
  const Seeking seeking(context_, fixed ? Sought::Constant : Sought::Value);
  for (int i = 1; i < expr.leavesCount(); ++i) {
    const Expr& subscript = analyseLeaf(expr, i);
    if (subscript.dataType == nullptr || isInteger(typeOf(subscript))) continue;
    say(subscript, message::kSubscriptType, describe(subscript));
  }
  if (base.dataType == nullptr) return nullptr;
  const int given = expr.leavesCount() - 1;
  const auto* const pointer = dynamic_cast<const PointerType*>(base.dataType);
  if (pointer != nullptr && !pointer->isReference && pointer->target != nullptr && given == 1) {
    return pointer->target;
  }
  const OpenArrayType* const open = asOpenArray(base.dataType);
  const auto* const array = dynamic_cast<const ArrayType*>(base.dataType);
  if (array == nullptr && open == nullptr) {
    say(expr, message::kNoElements, TreeBuilder::source(base), displayName(base.dataType));
    return nullptr;
  }
  const int dimensions =
      open != nullptr ? open->dimensions : static_cast<int>(array->bounds.size());
  if (given != dimensions) {
    say(expr, message::kSubscriptCount, TreeBuilder::source(base), std::to_string(dimensions),
        std::to_string(given));
    return nullptr;
  }
  if (open != nullptr) return open->element;
  for (int i = 0; i < dimensions; ++i) {
    const ASTNode& subscript = *expr.leaf(i + 1);
    const Bounds& bounds = array->bounds[static_cast<std::size_t>(i)];
    const auto constant = constantInteger(subscript);
    if (!constant || (*constant >= bounds.low && *constant <= bounds.high)) continue;
    say(subscript, message::kSubscriptRange, TreeBuilder::source(subscript), textOf(bounds.low),
        textOf(bounds.high));
  }
  return array->element;
}

vel::SymbolDataType* Expressions::typeDereference(Expr& expr) {
  const Expr& base = analyseLeaf(expr, 0);
  if (base.dataType == nullptr) return nullptr;
  const auto* const pointer = dynamic_cast<const PointerType*>(base.dataType);
  if (pointer != nullptr && pointer->target != nullptr) return pointer->target;
  say(expr, message::kNotAPointer, TreeBuilder::source(base), displayName(base.dataType));
  return nullptr;
}

bool Expressions::hasAddress(const Expr& value) const {
  if (value.kind != ExprKind::Variable) return isAccess(value.kind) && value.kind != ExprKind::Part;
  if (const auto* const variable = asVariable(value.symbol)) {
    return !variable->isDeviceBit();
  }
  vel::HeapAddress address;
  return services_.memory.parse(TreeBuilder::source(value), address) && !address.isBitMode();
}

bool Expressions::requireWritable(const Expr& target) {
  const bool instance =
      target.dataType != nullptr && target.dataType->dataType() == BasicDataType::FunctionBlock;
  if (target.dataType == nullptr) return true;
  if (isWritable(target, parts_.tests.isInTest()) && !instance) return true;
  say(target, message::kNotWritable, TreeBuilder::source(target));
  return false;
}

}  // namespace refhost
