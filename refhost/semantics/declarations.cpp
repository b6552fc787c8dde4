#include <algorithm>
#include <utility>

#include "core/op_manager_api.h"
#include "refhost/semantics/analyser.h"
#include "refhost/semantics/constants.h"

namespace refhost {

using vel::ASTNode;

namespace {

Role roleOf(VarSection section) {
  switch (section) {
    case VarSection::Input:
      return Role::Input;
    case VarSection::InOut:
      return Role::InOut;
    case VarSection::Output:
      return Role::Output;
    case VarSection::Temp:
      return Role::Temp;
    case VarSection::Var:
      break;
  }
  return Role::Local;
}

// Calls `visit(block, declaration)` for each declaration of a unit.
template <typename Visit>
void forEachDeclaration(const UnitSymbol& unit, Visit visit) {
  const ASTNode* const blocks = unit.node->leaf(Unit::kVarBlocks);
  for (int b = 0; blocks != nullptr && b < blocks->leavesCount(); ++b) {
    auto& block = static_cast<VarBlock&>(*blocks->leaf(b));
    for (int d = 0; d < block.leavesCount(); ++d) {
      visit(block, static_cast<VarDecl&>(*block.leaf(d)));
    }
  }
}

}  // namespace

void Analyser::declareUnits() {
  for (const Node* const type : tree_.types) {
    say(*type, message::kNotSupported, "Data type declarations (TYPE) are");
  }
  for (Unit* const node : tree_.units) {
    const std::string name = node->name();
    if (name.empty()) continue;  // the parser has said so
    const bool taken =
        services_.operators != nullptr && services_.operators->findOperator(name) != nullptr;
    if (taken || !services_.symbols.add(std::make_unique<UnitSymbol>(&services_, node))) {
      say(*node->leaf(Unit::kName), message::kRedeclared, name);
    }
  }
}

UnitSymbol* Analyser::unitNamed(const std::string& name) {
  if (services_.symbols.find(name, {}, Symbol::All) != nullptr) return services_.symbols.unit(name);
  Unit* const node = prelude_.unit(name);
  if (node == nullptr) return nullptr;
  services_.symbols.add(std::make_unique<UnitSymbol>(&services_, node));
  UnitSymbol* const added = services_.symbols.unit(name);
  UnitSymbol* const unit = std::exchange(unit_, nullptr);
  const std::string unitName = std::exchange(unitName_, {});
  declareVariables(*added);
  unit_ = unit;
  unitName_ = unitName;
  return added;
}

void Analyser::declareVariables(UnitSymbol& unit) {
  unit_ = &unit;
  unitName_ = unit.name();
  declareResult(unit);
  forEachDeclaration(unit, [&](const VarBlock& block, VarDecl& declaration) {
    Type* const type = resolveType(*declaration.leaf(VarDecl::kType));
    for (int n = VarDecl::kFirstName; n < declaration.leavesCount(); ++n) {
      declareVariable(unit, block, declaration, static_cast<Text&>(*declaration.leaf(n)), type);
    }
  });
}

void Analyser::declareVariable(UnitSymbol& unit, const VarBlock& block, VarDecl& declaration,
                               const Text& name, Type* type) {
  const Role role = roleOf(block.section);
  const bool bits = declaration.bitParameter && (role == Role::Input || role == Role::InOut);
  auto variable = std::make_unique<VarSymbol>(
      name.text(), type, role, bits ? vel::SymbolVar::kBitParameter : varKindOf(role), &unit);
  variable->initial = static_cast<Expr*>(declaration.leaf(VarDecl::kInitial));
  variable->constant = block.constant;
  if (const ASTNode* const address = declaration.leaf(VarDecl::kAddress)) {
    // Nobody calls a PROGRAM, so that its parameters may be anywhere.
    if (variable->isParameter() && unit.type() != vel::POUType::Program) {
      say(*address, message::kPlacedParameter, name.text());
    } else {
      place(*variable, *address, type);
    }
  }
  if (unit.addVariable(std::move(variable)) == nullptr) {
    say(name, message::kRedeclared, name.text());
  }
}

void Analyser::declareResult(UnitSymbol& unit) {
  if (unit.type() != vel::POUType::Function) return;
  const ASTNode* const spec = unit.node->leaf(Unit::kReturnType);
  if (spec == nullptr) return;
  unit.result = unit.addVariable(
      std::make_unique<VarSymbol>(unit.name(), resolveType(*spec), Role::Result, &unit));
}

void Analyser::place(VarSymbol& variable, const ASTNode& address, const Type* type) {
  const std::string_view text = vel::TreeBuilder::source(address);
  vel::HeapAddress parsed;
  if (!services_.memory.parse(text, parsed)) {
    say(address, message::kBadAddress, text);
    return;
  }
  if (type != nullptr) {
    const ElementaryType* const row = elementaryType(type->dataType());
    const bool fits = parsed.isBitMode()
                          ? type->dataType() == BasicDataType::Bool
                          : row != nullptr && type->dataType() != BasicDataType::Bool &&
                                row->size == static_cast<int>(parsed.unitSize);
    if (!fits) say(address, message::kAddressSize, text, type->typeName());
  }
  variable.placeAt(parsed, services_.memory.raw(parsed));
}

vel::SymbolDataType* Analyser::resolveType(const ASTNode& spec) {
  const bool known =
      spec.type() == vel::ASTType::NamedTypeSpec || spec.type() == vel::ASTType::StringTypeSpec;
  if (!known) {
    say(spec, message::kNotSupported, "Types of this kind are");
    return nullptr;
  }
  const auto& named = static_cast<const TypeSpec&>(spec);
  unitNamed(named.name);
  Type* const type = services_.symbols.dataType(named.name);
  if (type == nullptr) {
    say(spec, message::kUnknownType, named.name);
    return nullptr;
  }
  if (spec.type() != vel::ASTType::StringTypeSpec || spec.leaf(0) == nullptr) return type;
  auto& lengthNode = const_cast<ASTNode&>(spec);
  const Expr& length = analyseLeaf(lengthNode, 0);
  const auto characters = constantInteger(length);
  if (!characters || *characters < 1 || *characters > StringType::kMaxLength) {
    say(length, message::kStringLength, vel::TreeBuilder::source(length));
    return type;
  }
  return services_.symbols.stringType(type->dataType(), static_cast<int>(*characters));
}

void Analyser::analyseInitials(UnitSymbol& unit) {
  forEachDeclaration(unit, [&](const VarBlock&, VarDecl& declaration) {
    if (declaration.leaf(VarDecl::kInitial) == nullptr) return;
    Expr& initial = analyseLeaf(declaration, VarDecl::kInitial);
    const VarSymbol* declared = nullptr;
    for (int n = VarDecl::kFirstName; n < declaration.leavesCount(); ++n) {
      const auto& name = static_cast<const Text&>(*declaration.leaf(n));
      VarSymbol* const variable = unit.variable(name.text());
      if (variable == nullptr) continue;
      variable->initial = &initial;
      declared = variable;
    }
    if (declared == nullptr) return;
    if (declared->dataType() != nullptr &&
        declared->dataType()->dataType() == BasicDataType::FunctionBlock) {
      say(initial, message::kNotWritable, declared->name());
      return;
    }
    judge(declared->dataType(), initial.dataType, initial);
  });
}

void Analyser::refuseRecursiveBlocks() {
  // Depth first over the instances that blocks hold; a block met again on its own
  // path contains itself.
  enum class Mark : std::uint8_t { Unseen, OnPath, Done };
  FoldedMap<Mark> marks;
  const auto visit = [&](const auto& self, UnitSymbol& unit) -> void {
    marks[unit.name()] = Mark::OnPath;
    for (const auto& variable : unit.variables()) {
      const auto* const type = dynamic_cast<const InstanceType*>(variable->dataType());
      if (type == nullptr || variable->role == Role::InOut) continue;
      Mark& mark = marks[type->unit->name()];
      if (mark == Mark::OnPath) {
        say(*type->unit->node->leaf(Unit::kName), message::kContainsItself, type->unit->name());
      } else if (mark == Mark::Unseen) {
        self(self, *type->unit);
      }
    }
    marks[unit.name()] = Mark::Done;
  };
  for (UnitSymbol* const unit : services_.symbols.units()) {
    if (marks[unit->name()] == Mark::Unseen) visit(visit, *unit);
  }
}

}  // namespace refhost

vel::SymbolDataType* VarDeclaration::astSpec2SymbolDataType(vel::InternalInterface* ii,
                                                            vel::VarContainer*,
                                                            vel::ASTNode* typeSpec, bool* ok) {
  vel::SymbolDataType* type = nullptr;
  if (typeSpec != nullptr && (typeSpec->type() == vel::ASTType::NamedTypeSpec ||
                              typeSpec->type() == vel::ASTType::StringTypeSpec)) {
    auto& services = *static_cast<refhost::Services*>(ii);
    const auto& spec = *static_cast<refhost::TypeSpec*>(typeSpec);
    type = services.symbols.dataType(spec.name);
    const vel::ASTNode* const length = spec.leaf(0);
    const auto characters = length != nullptr ? refhost::constantInteger(*length) : std::nullopt;
    if (type != nullptr && characters) {
      type = services.symbols.stringType(type->dataType(), static_cast<int>(*characters));
    }
  }
  if (ok != nullptr) *ok = type != nullptr;
  return type;
}
