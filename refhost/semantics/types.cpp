#include <algorithm>

#include "hostkit/folding.h"
#include "hostkit/literal.h"
#include "refhost/prelude/prelude.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/dependency_order.h"
#include "refhost/syntax/unsupported.h"

namespace refhost {

using vel::ASTNode;
using vel::ASTType;
using vel::TreeBuilder;

namespace {

// Leaves of a TypeDecl.
constexpr int kDeclaredSpec = 1;
constexpr int kDeclaredInitial = 2;

const char* nameOf(const ASTNode& declaration) {
  return static_cast<const Text&>(*declaration.leaf(0)).text();
}

// False also for a declaration with a syntax error, which has no specification.
bool isSpecOf(const ASTNode& declaration, ASTType kind) {
  const ASTNode* const spec = declaration.leaf(kDeclaredSpec);
  return spec != nullptr && spec->type() == kind;
}

bool isVariable(const ASTNode& node) {
  return node.type() == ASTType::Expression &&
         static_cast<const Expr&>(node).kind == ExprKind::Variable;
}

// True of the name of a value in the declaration of an enumeration.
bool hasValue(const ASTNode& spec, std::string_view name) {
  for (int i = 0; i < spec.leavesCount(); ++i) {
    if (equalIgnoringCase(nameOf(*spec.leaf(i)), name)) return true;
  }
  return false;
}

bool isBefore(const ASTNode& a, const ASTNode& b) {
  const vel::TextLocation first = a.pos();
  const vel::TextLocation second = b.pos();
  return first.file() != second.file() ? first.file() < second.file()
                                       : first.offset() < second.offset();
}

// True of a specification that is a named type or has one as its base.
bool namesType(const ASTNode& node) {
  const ASTType kind = node.type();
  return kind == ASTType::NamedTypeSpec || kind == ASTType::SubrangeTypeSpec ||
         kind == ASTType::EnumTypeSpec;
}

}  // namespace

// Declarations may name types that are declared later. So structures are added before their
// members, and enumerations before the types whose bounds and lengths may use their values.
void Types::declareTypes() {
  for (Node* const node : tree_.types) {
    const char* const name = nameOf(*node);
    if (services_.symbols.find(name, {}, Symbol::All) != nullptr) {
      const UnitSymbol* const unit = services_.symbols.unit(name);
      const ASTNode* const unitName = unit != nullptr ? unit->node->leaf(Unit::kName) : nullptr;
      const bool later = unitName != nullptr && isBefore(*node->leaf(0), *unitName);
      if (later) {
        sayRedeclared(*unitName, name, node->leaf(0));
      } else {
        sayRedeclared(*node->leaf(0), name, unitName);
      }
      // The name of a function block is known as that of a type.
      if (!later && (unit == nullptr || unit->type() == vel::POUType::FunctionBlock)) continue;
    }
    const auto [known, isNew] = declaredTypes_.emplace(name, DeclaredType(node));
    if (!isNew) sayRedeclared(*node->leaf(0), name, known->second.node->leaf(0));
  }
  std::vector<DeclaredType*> declared;
  for (const Node* const node : tree_.types) {
    const auto found = declaredTypes_.find(nameOf(*node));
    if (found != declaredTypes_.end() && found->second.node == node) {
      declared.push_back(&found->second);
    }
  }
  for (DeclaredType* const type : declared) {
    if (!isSpecOf(*type->node, ASTType::StructTypeSpec)) continue;
    type->resolved = {services_.symbols.addType(
                          std::make_unique<StructType>(nameOf(*type->node), *type->node->leaf(0))),
                      static_cast<Expr*>(type->node->leaf(kDeclaredInitial))};
    type->progress = Progress::Done;
  }
  for (DeclaredType* const type : declared) {
    if (!isSpecOf(*type->node, ASTType::EnumTypeSpec)) continue;
    const ASTNode& spec = *type->node->leaf(kDeclaredSpec);
    for (int i = 0; i < spec.leavesCount(); ++i)
      enumerationOf_.emplace(nameOf(*spec.leaf(i)), type);
  }
  for (DeclaredType* const type : declared) {
    if (isSpecOf(*type->node, ASTType::EnumTypeSpec)) resolveDeclared(*type);
  }
  for (DeclaredType* const type : declared) resolveDeclared(*type);
  for (DeclaredType* const type : declared) {
    auto* const structure = dynamic_cast<StructType*>(type->resolved.type);
    if (structure != nullptr && isSpecOf(*type->node, ASTType::StructTypeSpec)) {
      declareMembers(*structure, *type->node->leaf(kDeclaredSpec));
    }
  }
}

// Leaves the values of an enumeration that cannot be resolved out of later messages.
void Types::excuseValues(const DeclaredType& declared) {
  if (!isSpecOf(*declared.node, ASTType::EnumTypeSpec)) return;
  const ASTNode& spec = *declared.node->leaf(kDeclaredSpec);
  for (int i = 0; i < spec.leavesCount(); ++i) {
    context_.unknown.emplace(nameOf(*spec.leaf(i)), true);
  }
}

bool Types::mayName(std::string_view name) const {
  const auto declares = [name](const Node* node) { return equalIgnoringCase(nameOf(*node), name); };
  const bool waits =
      declaredTypes_.empty() && std::any_of(tree_.types.begin(), tree_.types.end(), declares);
  return waits || context_.prelude.unit(std::string(name)) != nullptr;
}

ResolvedType Types::resolveDeclared(DeclaredType& declared) {
  visitDependencies(
      declared, [this](const DeclaredType& item) { return neededBy(item); },
      [this](const std::vector<DeclaredType*>& cycle) {
        const ASTNode& first = *cycle.front()->node;
        say(*first.leaf(0), message::kTypeContainsItself, nameOf(first));
        for (const DeclaredType* const type : cycle) excuseValues(*type);
      },
      [this](DeclaredType& item, const auto&) { resolveNow(item); });
  return declared.resolved;
}

std::vector<Types::DeclaredType*> Types::neededBy(const DeclaredType& declared) {
  std::vector<DeclaredType*> needed;
  const ASTNode* const whole = declared.node->leaf(kDeclaredSpec);
  if (whole == nullptr) return needed;
  const bool enumeration = whole->type() == ASTType::EnumTypeSpec;
  anyNode(*whole, [&](const ASTNode& node) {
    if (namesType(node)) {
      const auto found = declaredTypes_.find(static_cast<const TypeSpec&>(node).name);
      if (found != declaredTypes_.end()) needed.push_back(&found->second);
    } else if (enumeration && isVariable(node)) {
      DeclaredType* const other = enumerationNamedBy(node);
      const bool own = other == &declared || hasValue(*whole, TreeBuilder::source(node));
      if (other != nullptr && !own) needed.push_back(other);
    }
    return false;
  });
  return needed;
}

// The declared enumeration that `node` names, alone (before a '.' or a '#') or by one of its
// values; null for none.
Types::DeclaredType* Types::enumerationNamedBy(const ASTNode& node) {
  const std::string_view text = TreeBuilder::source(node);
  const std::string_view name = text.substr(0, text.find('#'));
  const auto type = declaredTypes_.find(name);
  if (type != declaredTypes_.end()) return &type->second;
  const auto value = enumerationOf_.find(name);
  return value != enumerationOf_.end() ? value->second : nullptr;
}

bool Types::resolveEnumerationOf(const ASTNode& node) {
  DeclaredType* const declared = enumerationNamedBy(node);
  if (declared == nullptr || declared->progress != Progress::Waiting) return false;
  resolveDeclared(*declared);
  return true;
}

void Types::resolveNow(DeclaredType& declared) {
  if (declared.node->leaf(kDeclaredSpec) == nullptr) return;
  ResolvedType resolved = resolve(*declared.node->leaf(kDeclaredSpec), nameOf(*declared.node));
  if (ASTNode* const initial = declared.node->leaf(kDeclaredInitial)) {
    resolved.initial = static_cast<Expr*>(initial);
  }
  if (resolved.type != nullptr) services_.symbols.addAlias(nameOf(*declared.node), resolved.type);
  declared.resolved = resolved;
}

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
  Type* const type = services_.symbols.dataType(spec.name);
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
      member->initial = static_cast<Expr*>(declaration.leaf(VarDecl::kInitial));
      member->typeInitial = resolved.initial;
      member->declared = &name;
      if (type != nullptr && isReferenceSpec(*type)) member->refer();
      if (!structure.addMember(std::move(member))) {
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
  for (auto& [name, declared] : declaredTypes_) {
    if (declared.node->leaf(kDeclaredInitial) == nullptr) continue;
    parts_.initials.analyseInitial(declared.resolved.type, *declared.node, kDeclaredInitial);
  }
  for (const MemberInitial& member : memberInitials_) {
    context_.unit = member.unit;
    parts_.initials.analyseDeclared(member.type, *member.declaration);
  }
}

}  // namespace refhost
