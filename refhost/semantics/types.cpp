#include <algorithm>

#include "hostkit/folding.h"
#include "hostkit/literal.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"
#include "refhost/syntax/unsupported.h"

namespace refhost {

using vel::ASTNode;
using vel::ASTType;
using vel::TreeBuilder;

ResolvedType Types::resolveVariable(ASTNode& node, bool openArrays) {
  if (openArrays && isOpenArraySpec(node)) {
    auto& spec = static_cast<TypeSpec&>(node);
    spec.dataType = resolveOpenArray(spec);
    return {spec.dataType, nullptr};
  }
  return resolve(isReferenceSpec(node) ? *node.leaf(0) : node);
}

ResolvedType Types::resolve(ASTNode& node, const std::string& name) {
  if (isReferenceSpec(node)) {
    say(node, message::kNotSupported,
        "References (REFERENCE TO) within other types, in type declarations and as results are");
    resolve(*node.leaf(0));
    return {};
  }
  if (isOpenArraySpec(node)) {
    say(node, message::kNotSupported,
        "Arrays of any bounds (ARRAY[*]) but as in-out parameters and inputs of functions are");
    return {};
  }
  auto& spec = static_cast<TypeSpec&>(node);
  switch (spec.type()) {
    case ASTType::StringTypeSpec:
      spec.dataType = resolveString(spec);
      break;
    case ASTType::SubrangeTypeSpec:
      spec.dataType = resolveSubrange(spec, name);
      break;
    case ASTType::EnumTypeSpec:
      spec.dataType = resolveEnumeration(spec, name);
      break;
    case ASTType::ArrayTypeSpec:
      spec.dataType = resolveArray(spec);
      break;
    case ASTType::StructTypeSpec: {
      auto* const structure =
          services_.symbols.addType(std::make_unique<StructType>(anonymousName("STRUCT"), spec));
      declareMembers(*structure, spec);
      spec.dataType = structure;
      break;
    }
    case ASTType::PointerTypeSpec:
    case ASTType::ReferenceTypeSpec:
      if (Type* const target = resolve(*spec.leaf(0)).type) {
        spec.dataType =
            services_.symbols.pointerType(target, spec.type() == ASTType::ReferenceTypeSpec);
      }
      break;
    default: {
      const ResolvedType resolved = resolveName(spec);
      spec.dataType = resolved.type;
      return resolved;
    }
  }
  return {spec.dataType, nullptr};
}

ResolvedType Types::resolveName(const TypeSpec& spec) {
  if (spec.name[0] == '\0') return {};  // a syntax error, which has been reported
  const auto declared = declaredTypes_.find(spec.name);
  if (declared != declaredTypes_.end()) return resolveDeclared(declared->second);
  parts_.declarations.unitNamed(spec.name);
  Type* type = services_.symbols.dataType(spec.name);
  if (type == services_.symbols.null()->dataType()) type = nullptr;
  if (type == nullptr) type = parts_.tests.programType(spec.name);
  if (type == nullptr) {
    const bool standard = isUnsupportedType(spec.name);
    Remarks* const said =
        sayUnknown(spec, standard ? message::kTypeNotSupported : message::kUnknownType, spec.name);
    const std::string_view name = spec.name;
    const bool first = TreeBuilder::source(spec).substr(0, name.size()) == name;
    if (said != nullptr && !standard && first) {
      const auto length = static_cast<std::uint32_t>(name.size());
      parts_.suggestions.addType(*said, {spec.pos(), length}, name);
    }
  }
  return {type, nullptr};
}

vel::SymbolDataType* Types::resolveString(TypeSpec& spec) {
  Type* const type = services_.symbols.dataType(spec.name);
  if (spec.leaf(0) == nullptr) return type;
  const Seeking seeking(context_, Sought::Constant);
  const Expr& length = parts_.expressions.analyseLeaf(spec, 0);
  if (length.dataType == nullptr) return type;
  const auto characters = constantInteger(length);
  if (!characters || *characters < 1 || *characters > StringType::kMaxLength) {
    say(length, message::kStringLength, TreeBuilder::source(length));
    return type;
  }
  return services_.symbols.stringType(type->dataType(), static_cast<int>(*characters));
}

// The bounds of a Range; reports an error and returns nothing when they are not constant or not in
// ascending order.
std::optional<Bounds> Types::resolveRange(ASTNode& range) {
  const auto low = parts_.expressions.requireConstant(range, 0);
  const auto high = parts_.expressions.requireConstant(range, 1);
  if (!low || !high) return {};
  if (*low <= *high) return Bounds{*low, *high};
  say(range, message::kBounds, TreeBuilder::source(range));
  return {};
}

vel::SymbolDataType* Types::resolveSubrange(TypeSpec& spec, const std::string& name) {
  Type* const base = resolveName(spec).type;
  const auto range = resolveRange(*spec.leaf(0));
  if (base == nullptr || !range) return base;
  if (!isInteger(base->dataType()) || !fits(range->low, base->dataType()) ||
      !fits(range->high, base->dataType())) {
    say(spec, message::kSubrange, TreeBuilder::source(*spec.leaf(0)), displayName(base));
    return base;
  }
  return services_.symbols.addType(std::make_unique<SubrangeType>(
      name.empty() ? anonymousName(base->typeName()) : name, base, *range));
}

// A value without a number is the previous one plus 1. Without a base type the enumeration has the
// smallest of INT, DINT and LINT that holds its values.
vel::SymbolDataType* Types::resolveEnumeration(TypeSpec& spec, const std::string& name) {
  auto* const type = services_.symbols.addType(
      std::make_unique<EnumType>(name.empty() ? anonymousName("ENUM") : name));
  const bool based = spec.name[0] != '\0';
  Type* base = based ? resolveName(spec).type : services_.symbols.elementary(BasicDataType::Int);
  const bool valid = base != nullptr && isInteger(base->dataType());
  if (valid) {
    type->base = base;
  } else {
    if (base != nullptr) say(spec, message::kEnumerationBase, displayName(base));
    type->base = services_.symbols.elementary(BasicDataType::Int);
  }
  Integer next = 0;
  for (int i = 0; i < spec.leavesCount(); ++i) {
    ASTNode& item = *spec.leaf(i);
    if (valid && item.leaf(1) != nullptr)
      next = parts_.expressions.requireConstant(item, 1).value_or(next);
    for (const BasicDataType wider : {BasicDataType::DInt, BasicDataType::LInt}) {
      if (based || fits(next, type->base->dataType())) break;
      type->base = services_.symbols.elementary(wider);
    }
    if (!fits(next, type->base->dataType())) {
      say(item, message::kConstantTooLarge, textOf(next), displayName(type->base));
    }
    NamedValue* const value = type->addValue(nameOf(item), next++);
    if (value != nullptr) value->declared = item.leaf(0);
    if (value == nullptr) {
      sayRedeclared(*item.leaf(0), nameOf(item), type->value(nameOf(item))->declared);
    } else if (context_.unit == nullptr) {
      services_.symbols.addNamedValue(value);
    } else if (!context_.unit->namedValues.emplace(value->name(), value).second) {
      context_.unit->namedValues[value->name()] = nullptr;
    }
  }
  return valid ? type : nullptr;
}

vel::SymbolDataType* Types::resolveArray(TypeSpec& spec) {
  const ResolvedType element = resolve(*spec.leaf(0));
  std::vector<Bounds> bounds;
  for (int i = 1; i < spec.leavesCount(); ++i) {
    const auto range = resolveRange(*spec.leaf(i));
    if (!range) return nullptr;
    if (!fits(range->high, BasicDataType::LInt)) {
      say(*spec.leaf(i), message::kSubrange, TreeBuilder::source(*spec.leaf(i)), "LINT");
      return nullptr;
    }
    bounds.push_back(*range);
  }
  if (element.type == nullptr) return nullptr;
  ArrayType* const type = services_.symbols.arrayType(element.type, element.initial, bounds);
  if (type->declared == nullptr) type->declared = &spec;
  return type;
}

vel::SymbolDataType* Types::resolveOpenArray(TypeSpec& spec) {
  Type* const element = resolve(*spec.leaf(0)).type;
  const int dimensions = spec.leavesCount() - 1;
  for (int i = 1; i <= dimensions; ++i) {
    if (spec.leaf(i)->leavesCount() == 0) continue;
    say(*spec.leaf(i), message::kNotSupported, "Arrays of both fixed and any bounds are");
    return nullptr;
  }
  return element != nullptr ? services_.symbols.openArrayType(element, dimensions) : nullptr;
}

void Types::declareMembers(StructType& structure, ASTNode& spec) {
  for (int d = 0; d < spec.leavesCount(); ++d) {
    auto& declaration = static_cast<VarDecl&>(*spec.leaf(d));
    ASTNode* const type = declaration.leaf(VarDecl::kType);
    const ResolvedType resolved = type != nullptr ? resolveVariable(*type, false) : ResolvedType{};
    for (int n = VarDecl::kFirstName; n < declaration.leavesCount(); ++n) {
      const auto& name = static_cast<const Text&>(*declaration.leaf(n));
      auto member = std::make_unique<VarSymbol>(name.text(), resolved.type, Role::Member, nullptr);
      member->initial = parts_.expressions.settled(declaration, VarDecl::kInitial);
      member->typeInitial = resolved.initial;
      member->declared = &name;
      if (type != nullptr && isReferenceSpec(*type)) member->refer();
      // One of the two may be a part of a broken declaration.
      if (!structure.addMember(std::move(member)) && !context_.mayMiss(context_.unit)) {
        sayRedeclared(name, name.text(), structure.member(name.text())->declared);
      }
    }
    if (declaration.leaf(VarDecl::kInitial) == nullptr) continue;
    memberInitials_.push_back({resolved.type, &declaration, context_.unit});
  }
}

// The name of an anonymous type. The '#' keeps it apart from the program's names.
std::string Types::anonymousName(const std::string& kind) {
  return kind + "#" + std::to_string(services_.symbols.ownedTypes().size());
}

void Types::analyseTypeInitials() {
  context_.enter(nullptr);
  for (auto& [name, declared] : declaredTypes_) {
    if (declared.node->leaf(kDeclaredInitial) == nullptr) continue;
    parts_.initials.analyseInitial(declared.resolved.type, *declared.node, kDeclaredInitial);
  }
  for (const MemberInitial& member : memberInitials_) {
    if (member.unit != context_.unit) context_.enter(member.unit);
    parts_.initials.analyseDeclared(member.type, *member.declaration);
    if (member.unit != nullptr && member.unit != services_.symbols.globals()) {
      parts_.declarations.checkDefault(*member.unit, *member.declaration);
    }
  }
}

}  // namespace refhost
