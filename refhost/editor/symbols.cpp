#include "refhost/editor/symbols.h"

#include <utility>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "hostkit/elementary_types.h"
#include "refhost/diagnostics.h"
#include "refhost/services/standard_functions.h"
#include "refhost/services/test_functions.h"

namespace refhost {

using vel::ASTType;
using vel::TreeBuilder;

namespace {

const Text& nameOf(const ASTNode& declaration, int leaf = 0) {
  return static_cast<const Text&>(*declaration.leaf(leaf));
}

SymbolKind symbolKindOf(const Unit& unit) {
  switch (unit.testPart) {
    case TestPart::Setup:
      return SymbolKind::Setup;
    case TestPart::Test:
      return SymbolKind::Test;
    case TestPart::Teardown:
      return SymbolKind::Teardown;
    case TestPart::None:
      break;
  }
  const vel::POUType type = unit.POUDeclaration::type();
  return type == vel::POUType::Program    ? SymbolKind::Program
         : type == vel::POUType::Function ? SymbolKind::Function
                                          : SymbolKind::FunctionBlock;
}

SymbolKind symbolKindOf(VarSection section) {
  switch (section) {
    case VarSection::Input:
      return SymbolKind::Input;
    case VarSection::Output:
      return SymbolKind::Output;
    case VarSection::InOut:
      return SymbolKind::InOut;
    case VarSection::Temp:
      return SymbolKind::Temporary;
    case VarSection::Global:
      return SymbolKind::Global;
    case VarSection::Var:
    case VarSection::External:
      break;
  }
  return SymbolKind::Variable;
}

template <typename Map>
SymbolId found(const Map& map, std::string_view name) {
  const auto at = map.find(name);
  return at != map.end() ? at->second : kNoSymbol;
}

}  // namespace

bool isUnit(SymbolKind kind) { return kind <= SymbolKind::Teardown; }

bool isType(SymbolKind kind) {
  return kind == SymbolKind::Structure || kind == SymbolKind::Enumeration ||
         kind == SymbolKind::Type || kind == SymbolKind::ElementaryType;
}

bool isVariable(SymbolKind kind) {
  return kind >= SymbolKind::Variable && kind <= SymbolKind::Global;
}

bool isParameter(SymbolKind kind) { return kind >= SymbolKind::Input && kind <= SymbolKind::InOut; }

Symbols::Symbols(const AnalysedProgram& program) {
  const Tree& tree = program.tree;
  scopes_[kNoSymbol];
  for (const VarBlock* const block : tree.globals) addBlock(*block, kNoSymbol);
  for (const Node* const declaration : tree.types) addType(*declaration);
  for (const Unit* const unit : tree.units) addUnit(*unit, symbolKindOf(*unit), false);
  for (const Unit* const unit : tree.tests) addUnit(*unit, symbolKindOf(*unit), false);
  for (const UnitSymbol* const unit : program.services.symbols.units()) {
    if (unit->standard) addUnit(*unit->node, symbolKindOf(*unit->node), true);
  }
  addConfigurations(tree);
  addStandard(program);
  linkSetups();
  linkAnalysis(program.services);
}

SymbolId Symbols::add(SymbolKind kind, const ASTNode& name, const ASTNode& node,
                      SymbolId container) {
  const auto id = static_cast<SymbolId>(symbols_.size());
  SymbolInfo info;
  info.kind = kind;
  info.name = std::string(TreeBuilder::source(name));
  info.nameRange = rangeOf(name);
  info.extent = rangeOf(node);
  info.container = container;
  info.node = &node;
  info.standard = container != kNoSymbol && symbols_[container].standard;
  symbols_.push_back(std::move(info));
  byName_.emplace(&name, id);
  order_[container].push_back(id);
  return id;
}

void Symbols::addUnit(const Unit& unit, SymbolKind kind, bool standard) {
  const Text& name = nameOf(unit, Unit::kName);
  const SymbolId id = add(kind, name, unit, kNoSymbol);
  symbols_[id].standard = standard;
  byUnit_.emplace(&unit, id);
  if (unit.testPart == TestPart::None && name.text()[0] != '\0') types_.emplace(name.text(), id);
  Scope& scope = scopes_[id];
  if (const ASTNode* const result = unit.leaf(Unit::kReturnType)) {
    if (name.text()[0] != '\0') scope.variables.emplace(name.text(), id);
    addParts(*result, id, id);
  }
  const ASTNode* const blocks = unit.leaf(Unit::kVarBlocks);
  for (int i = 0; blocks != nullptr && i < blocks->leavesCount(); ++i) {
    addBlock(static_cast<const VarBlock&>(*blocks->leaf(i)), id);
  }
}

void Symbols::addBlock(const VarBlock& block, SymbolId unit) {
  for (int d = 0; d < block.leavesCount(); ++d) {
    const auto& declaration = static_cast<const VarDecl&>(*block.leaf(d));
    for (int n = VarDecl::kFirstName; n < declaration.leavesCount(); ++n) {
      addVariable(block, declaration, nameOf(declaration, n), unit);
    }
  }
}

// A second declaration of a name belongs to the first, so that both are renamed.
void Symbols::addVariable(const VarBlock& block, const VarDecl& declaration, const Text& name,
                          SymbolId unit) {
  SymbolId known = variableOf(unit, name.text());
  const bool external = block.section == VarSection::External;
  if (known == kNoSymbol && external) {
    known = global(name.text());
    if (known != kNoSymbol) scopes_[unit].variables.emplace(name.text(), known);
  }
  if (known != kNoSymbol) {
    byName_.emplace(&name, known);
    return;
  }
  const SymbolId id = add(symbolKindOf(block.section), name, declaration, unit);
  symbols_[id].constant = block.constant;
  scopes_[unit].variables.emplace(name.text(), id);
  // A type without a name belongs to the first of the variables.
  const ASTNode* const spec = declaration.leaf(VarDecl::kType);
  const bool first = &name == declaration.leaf(VarDecl::kFirstName);
  if (spec != nullptr && first) addParts(*spec, id, unit);
}

// The members of structures and the values of enumerations, in a type within others, too.
void Symbols::addParts(const ASTNode& spec, SymbolId owner, SymbolId unit) {
  const bool enumeration = spec.type() == ASTType::EnumTypeSpec;
  if (enumeration || spec.type() == ASTType::StructTypeSpec) {
    for (int i = 0; i < spec.leavesCount(); ++i) {
      const ASTNode& part = *spec.leaf(i);
      if (enumeration) {
        const Text& name = nameOf(part);
        const SymbolId known = partOf(owner, name.text());
        if (known != kNoSymbol) {
          byName_.emplace(&name, known);
          continue;
        }
        const SymbolId id = add(SymbolKind::Value, name, part, owner);
        symbols_[id].constant = true;
        parts_[owner].emplace(name.text(), id);
        auto [at, isNew] = scopes_[unit].values.emplace(name.text(), id);
        if (!isNew) at->second = kNoSymbol;
        continue;
      }
      for (int n = VarDecl::kFirstName; n < part.leavesCount(); ++n) {
        const Text& name = nameOf(part, n);
        const auto [at, isNew] =
            parts_[owner].emplace(name.text(), static_cast<SymbolId>(symbols_.size()));
        if (!isNew) {
          byName_.emplace(&name, at->second);
          continue;
        }
        const SymbolId id = add(SymbolKind::Member, name, part, owner);
        const ASTNode* const type = part.leaf(VarDecl::kType);
        if (type != nullptr && n == VarDecl::kFirstName) addParts(*type, id, unit);
      }
    }
    return;
  }
  const ASTNode* const inner = spec.leavesCount() > 0 ? spec.leaf(0) : nullptr;
  const bool holds = spec.type() == ASTType::ArrayTypeSpec ||
                     spec.type() == ASTType::PointerTypeSpec ||
                     spec.type() == ASTType::ReferenceTypeSpec || isReferenceSpec(spec);
  if (holds && inner != nullptr) addParts(*inner, owner, unit);
}

void Symbols::addType(const ASTNode& declaration) {
  const Text& name = nameOf(declaration);
  const ASTNode* const spec = declaration.leaf(1);
  const ASTType type = spec != nullptr ? spec->type() : ASTType::NamedTypeSpec;
  const SymbolKind kind = type == ASTType::StructTypeSpec ? SymbolKind::Structure
                          : type == ASTType::EnumTypeSpec ? SymbolKind::Enumeration
                                                          : SymbolKind::Type;
  const SymbolId id = add(kind, name, declaration, kNoSymbol);
  types_.emplace(name.text(), id);
  if (spec != nullptr) addParts(*spec, id, kNoSymbol);
}

void Symbols::addConfigurations(const Tree& tree) {
  const auto outer = [this](const Text* name) {
    return name != nullptr ? declaredAt(*name) : kNoSymbol;
  };
  for (const bool resource : {false, true}) {
    const SymbolKind kind = resource ? SymbolKind::Resource : SymbolKind::Configuration;
    for (const ConfigurationPart& part : tree.configurations) {
      if (part.isResource != resource) continue;
      const SymbolId id = add(kind, *part.name, *part.name, outer(part.configuration));
      symbols_[id].extent = part.range;
    }
  }
  const auto addItem = [&](const ConfigurationItem& item, SymbolKind kind) {
    add(kind, *item.leaf(0), item,
        outer(item.resource != nullptr ? item.resource : item.configuration));
  };
  for (const ConfigurationItem* const task : tree.tasks) addItem(*task, SymbolKind::Task);
  for (const ConfigurationItem* const item : tree.instances) addItem(*item, SymbolKind::Instance);
}

void Symbols::linkSetups() {
  std::unordered_map<std::uint32_t, SymbolId> setups;  // by file
  for (const auto& [unit, id] : byUnit_) {
    if (unit->testPart != TestPart::Setup) continue;
    const auto [at, isNew] = setups.emplace(unit->pos().file(), id);
    if (!isNew && id < at->second) at->second = id;
  }
  for (const auto& [unit, id] : byUnit_) {
    if (unit->testPart != TestPart::Test && unit->testPart != TestPart::Teardown) continue;
    const auto at = setups.find(unit->pos().file());
    if (at != setups.end()) scopes_[id].setup = at->second;
  }
}

void Symbols::link(const ASTNode* name, const vel::Symbol& symbol) {
  const SymbolId id = name != nullptr ? declaredAt(*name) : kNoSymbol;
  if (id != kNoSymbol && symbols_[id].symbol == nullptr) symbols_[id].symbol = &symbol;
}

void Symbols::linkAnalysis(const Services& services) {
  const auto linkVariables = [this](const UnitSymbol& unit) {
    for (const auto& variable : unit.variables()) link(variable->declared, *variable);
  };
  if (services.symbols.globals() != nullptr) linkVariables(*services.symbols.globals());
  for (const UnitSymbol* const unit : services.symbols.units()) linkVariables(*unit);
  for (const auto& type : services.symbols.ownedTypes()) {
    if (const auto* const structure = dynamic_cast<const StructType*>(type.get())) {
      for (const auto& member : structure->members()) link(member->declared, *member);
    } else if (const auto* const enumeration = dynamic_cast<const EnumType*>(type.get())) {
      for (const auto& value : enumeration->values()) link(value->declared, *value);
    }
  }
}

void Symbols::addStandard(const AnalysedProgram& program) {
  // Their names live in the registry, which outlives the view, or are literals.
  const auto addName = [this](SymbolKind kind, std::string_view name) {
    const auto id = static_cast<SymbolId>(symbols_.size());
    if (!standard_.emplace(name, id).second) return;
    SymbolInfo info;
    info.kind = kind;
    info.name = std::string(name);
    info.standard = true;
    symbols_.push_back(std::move(info));
  };
  for (const auto& type : hostkit::elementaryTypes())
    addName(SymbolKind::ElementaryType, type.name);
  for (const std::string_view alias : {"TIME_OF_DAY", "DATE_AND_TIME"}) {
    if (hostkit::elementaryType(alias) != nullptr) addName(SymbolKind::ElementaryType, alias);
  }
  const auto addFunction = [&](const auto& row) {
    addName(SymbolKind::StandardFunction, row.name);
  };
  forEachStandardFunction(addFunction);
  forEachTestFunction(addFunction);
  addName(SymbolKind::StandardFunction, "REF");
  std::vector<std::string> names;
  if (program.services.operators != nullptr) program.services.operators->operatorNames(names);
  for (const std::string& name : names) {
    addName(SymbolKind::Operator, program.services.operators->findOperator(name)->name);
  }
}

SymbolId Symbols::declaredAt(const ASTNode& name) const {
  const auto at = byName_.find(&name);
  return at != byName_.end() ? at->second : kNoSymbol;
}

SymbolId Symbols::of(const vel::Symbol* symbol) const {
  const ASTNode* name = nullptr;
  if (symbol == nullptr) return kNoSymbol;
  if (symbol->symbolType() == vel::Symbol::Variable) {
    name = static_cast<const VarSymbol*>(symbol)->declared;
  } else if (symbol->symbolType() == vel::Symbol::Typed) {
    name = static_cast<const NamedValue*>(symbol)->declared;
  }
  return name != nullptr ? declaredAt(*name) : kNoSymbol;
}

SymbolId Symbols::ofType(std::string_view name) const { return found(types_, name); }

SymbolId Symbols::ofUnit(const Unit& unit) const {
  const auto at = byUnit_.find(&unit);
  return at != byUnit_.end() ? at->second : kNoSymbol;
}

SymbolId Symbols::setupOf(SymbolId unit) const {
  const auto at = scopes_.find(unit);
  return at != scopes_.end() ? at->second.setup : kNoSymbol;
}

SymbolId Symbols::variableOf(SymbolId unit, std::string_view name) const {
  const auto at = scopes_.find(unit);
  return at != scopes_.end() ? found(at->second.variables, name) : kNoSymbol;
}

SymbolId Symbols::variable(std::string_view name, SymbolId unit) const {
  if (unit == kNoSymbol) return global(name);
  const SymbolId own = variableOf(unit, name);
  if (own != kNoSymbol) return own;
  const SymbolId setup = setupOf(unit);
  const SymbolId shared = setup != kNoSymbol ? variableOf(setup, name) : kNoSymbol;
  const bool visible = shared != kNoSymbol && symbols_[shared].kind != SymbolKind::Temporary;
  return visible ? shared : global(name);
}

SymbolId Symbols::value(std::string_view name, SymbolId unit) const {
  for (SymbolId scope = unit; scope != kNoSymbol; scope = setupOf(scope)) {
    const auto at = scopes_.find(scope);
    if (at == scopes_.end()) break;
    const auto local = at->second.values.find(name);
    if (local != at->second.values.end()) return local->second;
  }
  return found(scopes_.at(kNoSymbol).values, name);
}

SymbolId Symbols::partOf(SymbolId owner, std::string_view name) const {
  const auto at = parts_.find(owner);
  return at != parts_.end() ? found(at->second, name) : kNoSymbol;
}

SymbolId Symbols::standard(std::string_view name) const { return found(standard_, name); }

std::vector<SymbolId> Symbols::partsOf(SymbolId container) const {
  const auto at = order_.find(container);
  return at != order_.end() ? at->second : std::vector<SymbolId>();
}

const vel::SymbolDataType* Symbols::dataType(SymbolId id) const {
  const vel::Symbol* const symbol = symbols_[id].symbol;
  if (symbol == nullptr) return nullptr;
  if (symbol->symbolType() == vel::Symbol::Variable) {
    return static_cast<const VarSymbol*>(symbol)->dataType();
  }
  return static_cast<const NamedValue*>(symbol)->dataType();
}

}  // namespace refhost
