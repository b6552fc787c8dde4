#include "refhost/editor/name_walk.h"

#include <algorithm>

#include "hostkit/folding.h"
#include "refhost/diagnostics.h"

namespace refhost {

using vel::ASTType;
using vel::TreeBuilder;

void NameWalk::run() {
  const Tree& tree = program_.tree;
  for (const VarBlock* const block : tree.globals) walkBlock(*block);
  for (const Node* const declaration : tree.types) walkTypeDecl(*declaration);
  for (const Unit* const unit : tree.units) walkUnit(*unit);
  for (const Unit* const unit : tree.tests) walkUnit(*unit);
  unit_ = kNoSymbol;
  for (const ConfigurationPart& part : tree.configurations) declare(*part.name);
  for (const ConfigurationItem* const task : tree.tasks) walkTask(*task);
  for (const ConfigurationItem* const instance : tree.instances) walkInstance(*instance);
  for (const VarBlock* const block : tree.configured) {
    for (int i = 0; i < block->leavesCount(); ++i) walkConfigured(*block->leaf(i));
  }
}

Occurrence* NameWalk::add(vel::TextLocation begin, std::size_t length, SymbolId symbol,
                          Lookup lookup) {
  if (symbol == kNoSymbol || length == 0 || !program_.isOpenable(begin.file())) return nullptr;
  found_.push_back({{begin, static_cast<std::uint32_t>(length)}, symbol, unit_, lookup});
  return &found_.back();
}

Occurrence* NameWalk::add(const ASTNode& name, SymbolId symbol, Lookup lookup) {
  return add(name.pos(), TreeBuilder::source(name).size(), symbol, lookup);
}

void NameWalk::declare(const ASTNode& name, bool writes) {
  Occurrence* const added = add(name, symbols_.declaredAt(name), Lookup::Name);
  if (added == nullptr) return;
  added->declares = true;
  added->writes = writes;
}

void NameWalk::walkUnit(const Unit& unit) {
  unit_ = symbols_.ofUnit(unit);
  if (unit.testPart == TestPart::None) declare(*unit.leaf(Unit::kName));
  if (const ASTNode* const result = unit.leaf(Unit::kReturnType)) walkType(*result);
  const ASTNode* const blocks = unit.leaf(Unit::kVarBlocks);
  for (int i = 0; blocks != nullptr && i < blocks->leavesCount(); ++i) {
    walkBlock(static_cast<const VarBlock&>(*blocks->leaf(i)));
  }
  if (unit.leaf(Unit::kBody) != nullptr) walk(*unit.leaf(Unit::kBody));
}

void NameWalk::walkBlock(const VarBlock& block) {
  for (int i = 0; i < block.leavesCount(); ++i) {
    walkVariables(*block.leaf(i), block.section == VarSection::External);
  }
}

void NameWalk::walkVariables(const ASTNode& declaration, bool external) {
  const ASTNode* const initial = declaration.leaf(VarDecl::kInitial);
  for (int n = VarDecl::kFirstName; n < declaration.leavesCount(); ++n) {
    const ASTNode& name = *declaration.leaf(n);
    const SymbolId id = symbols_.declaredAt(name);
    const bool refers = external && id != kNoSymbol && symbols_[id].kind == SymbolKind::Global;
    if (refers) {
      add(name, id, Lookup::Name);
    } else {
      declare(name, initial != nullptr);
    }
  }
  if (declaration.leaf(VarDecl::kType) != nullptr) walkType(*declaration.leaf(VarDecl::kType));
  if (initial == nullptr) return;
  const ASTNode& first = *declaration.leaf(VarDecl::kFirstName);
  const SymbolId id = symbols_.declaredAt(first);
  walkValue(static_cast<const Expr&>(*initial), id != kNoSymbol ? symbols_.dataType(id) : nullptr);
}

void NameWalk::walkTypeDecl(const ASTNode& declaration) {
  unit_ = kNoSymbol;
  declare(*declaration.leaf(0));
  const ASTNode* const spec = declaration.leaf(1);
  if (spec != nullptr) walkType(*spec);
  if (declaration.leaf(2) == nullptr) return;
  const bool plain = spec != nullptr && !isReferenceSpec(*spec);
  const Type* type = plain ? static_cast<const TypeSpec*>(spec)->dataType : nullptr;
  if (type == nullptr) {
    type = program_.services.symbols.dataType(TreeBuilder::source(*declaration.leaf(0)));
  }
  walkValue(exprAt(declaration, 2), type);
}

void NameWalk::walkType(const ASTNode& spec) {
  if (isReferenceSpec(spec)) {
    walkType(*spec.leaf(0));
    return;
  }
  const std::string_view name = static_cast<const TypeSpec&>(spec).name;
  switch (spec.type()) {
    case ASTType::NamedTypeSpec:
    case ASTType::SubrangeTypeSpec:
    case ASTType::EnumTypeSpec:
      nameType(spec, name);
      break;
    case ASTType::StructTypeSpec:
      for (int i = 0; i < spec.leavesCount(); ++i) walkVariables(*spec.leaf(i), false);
      return;
    case ASTType::ArrayTypeSpec:
    case ASTType::PointerTypeSpec:
    case ASTType::ReferenceTypeSpec:
      walkType(*spec.leaf(0));
      for (int i = 1; i < spec.leavesCount(); ++i) walk(*spec.leaf(i));
      return;
    default:
      break;
  }
  for (int i = 0; i < spec.leavesCount(); ++i) {
    if (spec.leaf(i) == nullptr) continue;
    const ASTNode& part = *spec.leaf(i);
    if (spec.type() == ASTType::EnumTypeSpec) {
      declare(*part.leaf(0), part.leaf(1) != nullptr);
      if (part.leaf(1) != nullptr) walk(*part.leaf(1));
    } else {
      walk(part);
    }
  }
}

// The name stands in front or, of an enumeration's base type, behind.
void NameWalk::nameType(const ASTNode& spec, std::string_view name) {
  const std::string_view source = TreeBuilder::source(spec);
  if (name.empty() || source.size() < name.size()) return;
  const bool front = equalIgnoringCase(source.substr(0, name.size()), name);
  const std::size_t skipped = front ? 0 : source.size() - name.size();
  if (!equalIgnoringCase(source.substr(skipped, name.size()), name)) return;
  add(vel::TextLocation(spec.pos().file(),
                        spec.pos().offset() + static_cast<std::uint32_t>(skipped)),
      name.size(), typeNamed(name), Lookup::Type);
}

SymbolId NameWalk::typeNamed(std::string_view name) const {
  const SymbolId own = symbols_.ofType(name);
  if (own != kNoSymbol) return own;
  const SymbolId standard = symbols_.standard(name);
  const bool type = standard != kNoSymbol && symbols_[standard].kind == SymbolKind::ElementaryType;
  return type ? standard : kNoSymbol;
}

// An initial value. Lists have no type of their own, so the fields of structures are found by the
// type of the variable.
void NameWalk::walkValue(const Expr& value, const Type* type) {
  if (value.kind == ExprKind::ArrayValue || value.kind == ExprKind::Repeat) {
    for (int i = 0; i < value.leavesCount(); ++i) walkValue(exprAt(value, i), type);
    return;
  }
  if (value.kind != ExprKind::StructValue) {
    walkExpr(value, false);
    return;
  }
  while (const auto* const array = dynamic_cast<const ArrayType*>(type)) type = array->element;
  for (int i = 0; i < value.leavesCount(); ++i) {
    const ASTNode& field = *value.leaf(i);
    const VarSymbol* const member = memberOf(type, TreeBuilder::source(*field.leaf(0)));
    Occurrence* const added = add(*field.leaf(0), symbols_.of(member), Lookup::Qualified);
    if (added != nullptr) added->writes = true;
    walkValue(exprAt(field, 1), member != nullptr ? member->dataType() : nullptr);
  }
}

void NameWalk::walkTask(const ConfigurationItem& task) {
  declare(*task.leaf(0));
  const ASTNode* const properties = static_cast<const Call&>(*task.leaf(1)).parameters();
  for (int i = 0; properties != nullptr && i < properties->leavesCount(); ++i) {
    const ASTNode& property = *properties->leaf(i);
    walk(kindOf(property) == NodeKind::Argument ? *property.leaf(1) : property);
  }
}

void NameWalk::walkInstance(const ConfigurationItem& instance) {
  declare(*instance.leaf(0));
  const auto& call = static_cast<const Call&>(*instance.leaf(1));
  const SymbolId program = symbols_.ofType(TreeBuilder::source(*call.leaf(0)));
  add(*call.leaf(0), program, Lookup::Type);
  walkArguments(call, program);
  if (instance.leaf(2) == nullptr) return;
  const SymbolId resource =
      instance.resource != nullptr ? symbols_.declaredAt(*instance.resource) : kNoSymbol;
  const SymbolId configuration =
      instance.configuration != nullptr ? symbols_.declaredAt(*instance.configuration) : kNoSymbol;
  const std::string_view name = TreeBuilder::source(*instance.leaf(2));
  for (const SymbolId owner : {resource, configuration}) {
    const SymbolId task = partNamed(owner, name, SymbolKind::Task);
    if (task == kNoSymbol) continue;
    add(*instance.leaf(2), task, Lookup::Qualified);
    return;
  }
}

SymbolId NameWalk::partNamed(SymbolId owner, std::string_view name, SymbolKind kind) const {
  if (owner == kNoSymbol) return kNoSymbol;
  for (const SymbolId part : symbols_.partsOf(owner)) {
    if (symbols_[part].kind == kind && equalIgnoringCase(symbols_[part].name, name)) return part;
  }
  return kNoSymbol;
}

// An entry of VAR_CONFIG: RESOURCE.INSTANCE.variable, INSTANCE.variable, PROGRAM.variable or the
// name of a global variable, each with members. The analysis knows the variables.
void NameWalk::walkConfigured(const ASTNode& entry) {
  if (entry.leaf(VarDecl::kType) != nullptr) walkType(*entry.leaf(VarDecl::kType));
  std::vector<const Expr*> names{&exprAt(entry, VarDecl::kFirstName)};
  while (isAccess(names.back()->kind)) names.push_back(&exprAt(*names.back(), 0));
  std::reverse(names.begin(), names.end());
  SymbolId owner = kNoSymbol;
  for (const Expr* const part : names) {
    const bool member = part->kind == ExprKind::Member;
    if (!member && part->kind != ExprKind::Variable) {
      for (int i = 1; i < part->leavesCount(); ++i) walk(*part->leaf(i));
      continue;
    }
    const ASTNode& name = member ? *part->leaf(1) : static_cast<const ASTNode&>(*part);
    const SymbolId variable = symbols_.of(part->symbol);
    const bool known = variable != kNoSymbol;
    if (!known) owner = rootNamed(TreeBuilder::source(name), owner);
    const bool path = !known || symbols_[variable].kind == SymbolKind::Global;
    Occurrence* const added =
        add(name, known ? variable : owner, path ? Lookup::Path : Lookup::Qualified);
    if (added != nullptr) added->writes = known && part == names.back();
  }
  const SymbolId last = symbols_.of(names.back()->symbol);
  if (entry.leaf(VarDecl::kInitial) == nullptr) return;
  walkValue(exprAt(entry, VarDecl::kInitial),
            last != kNoSymbol ? symbols_.dataType(last) : nullptr);
}

// An instance, a resource, or a PROGRAM of which there are no instances.
SymbolId NameWalk::rootNamed(std::string_view name, SymbolId resource) const {
  SymbolId found = kNoSymbol;
  for (SymbolId id = 0; id < symbols_.count(); ++id) {
    const SymbolInfo& symbol = symbols_[id];
    const bool instance = symbol.kind == SymbolKind::Instance &&
                          (resource == kNoSymbol || symbol.container == resource);
    const bool root = resource == kNoSymbol && symbol.kind == SymbolKind::Resource;
    if (!instance && !root) continue;
    if (!equalIgnoringCase(symbol.name, name)) continue;
    if (instance) return id;
    found = id;
  }
  return found != kNoSymbol ? found : symbols_.ofType(name);
}

}  // namespace refhost
