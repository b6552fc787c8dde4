#include <algorithm>
#include <unordered_set>
#include <utility>

#include "core/op_manager_api.h"
#include "host/ast_node_helper.h"
#include "refhost/prelude/prelude.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;

namespace {

Role roleIn(VarSection section) {
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
    case VarSection::Global:
    case VarSection::External:
      break;
  }
  return Role::Local;
}

bool takesOpenArrays(const UnitSymbol& unit, const VarBlock& block) {
  return block.section == VarSection::InOut ||
         (block.section == VarSection::Input && unit.type() == vel::POUType::Function);
}

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

void Declarations::declareUnits() {
  for (Unit* const node : tree_.units) {
    const std::string name = node->name();
    if (name.empty()) continue;  // a syntax error, which has been reported
    const bool taken =
        services_.operators != nullptr && services_.operators->findOperator(name) != nullptr;
    if (taken) {
      say(*node->leaf(Unit::kName), message::kOperatorName, name);
      context_.hidden.emplace(node->name(), true);
    } else if (!services_.symbols.add(std::make_unique<UnitSymbol>(&services_, node))) {
      const UnitSymbol* const first = services_.symbols.unit(name);
      sayRedeclared(*node->leaf(Unit::kName), name,
                    first != nullptr ? first->node->leaf(Unit::kName) : nullptr);
    }
  }
}

UnitSymbol* Declarations::unitNamed(const std::string& name) {
  if (services_.symbols.find(name, {}, Symbol::All) != nullptr) return services_.symbols.unit(name);
  Unit* const node = context_.prelude.unit(name);
  if (node == nullptr) return nullptr;
  services_.symbols.add(std::make_unique<UnitSymbol>(&services_, node));
  UnitSymbol* const added = services_.symbols.unit(name);
  added->standard = true;
  UnitSymbol* const unit = std::exchange(context_.unit, nullptr);
  const std::string unitName = std::exchange(context_.unitName, {});
  declareVariables(*added);
  context_.unit = unit;
  context_.unitName = unitName;
  return added;
}

// Declares the constants of elementary types first, since string lengths, array bounds and types
// may name them before their declarations.
void Declarations::constantsAhead(UnitSymbol& unit) {
  forEachDeclaration(unit, [&](const VarBlock& block, VarDecl& declaration) {
    if (!block.constant || block.section == VarSection::External) return;
    const auto* const spec = static_cast<const TypeSpec*>(declaration.leaf(VarDecl::kType));
    if (spec == nullptr || spec->type() != vel::ASTType::NamedTypeSpec) return;
    Type* const type = services_.symbols.dataType(spec->name);
    const bool unknown = type == nullptr && !parts_.types.mayName(spec->name);
    if (type != nullptr && isComposite(type)) return;
    for (int n = VarDecl::kFirstName; n < declaration.leavesCount(); ++n) {
      const char* const name = static_cast<const Text&>(*declaration.leaf(n)).text();
      auto constant = std::make_unique<VarSymbol>(name, type, roleIn(block.section), &unit);
      constant->constant = true;
      constant->refused = unknown || declaration.valueMissing;
      constant->initial = static_cast<Expr*>(declaration.leaf(VarDecl::kInitial));
      if (type == nullptr && !unknown) {
        parts_.names.addWaiting(std::move(constant), *spec);
      } else {
        parts_.names.addAhead(std::move(constant));
      }
    }
  });
}

void Declarations::makeGlobals() {
  if (tree_.globals.empty()) return;
  std::stable_partition(tree_.globals.begin(), tree_.globals.end(),
                        [](const VarBlock* block) { return block->constant; });
  Node* const blocks = tree_.make<Node>(NodeKind::VarBlocks);
  tree_.setLeaves(*blocks, {tree_.globals.begin(), tree_.globals.end()});
  Unit* const node = tree_.make<Unit>("(globals)", vel::POUType::Program);
  tree_.setLeaves(*node, {nullptr, nullptr, blocks, nullptr});
  services_.symbols.setGlobals(std::make_unique<UnitSymbol>(&services_, node));
  constantsAhead(*services_.symbols.globals());
}

bool Declarations::declaresVariable(std::string_view name) const {
  bool found = false;
  const UnitSymbol* const outer = context_.unit != nullptr ? context_.unit->outer : nullptr;
  const UnitSymbol* const own = context_.unit;
  for (const UnitSymbol* const unit :
       {static_cast<const UnitSymbol*>(services_.symbols.globals()), outer, own}) {
    if (unit == nullptr) continue;
    forEachDeclaration(*unit, [&](const VarBlock& block, const VarDecl& declaration) {
      if (unit == outer && block.section == VarSection::Temp) return;
      for (int n = VarDecl::kFirstName; n < declaration.leavesCount(); ++n) {
        found = found || equalIgnoringCase(vel::TreeBuilder::source(*declaration.leaf(n)), name);
      }
    });
  }
  return found;
}

void Declarations::declareVariables(UnitSymbol& unit) {
  context_.enter(&unit);
  // The constants of the global variables are declared by makeGlobals(), because types name them.
  Names::ConstantsAhead outer;
  const bool own = &unit != services_.symbols.globals();
  if (own) {
    outer = parts_.names.replaceAhead({});
    constantsAhead(unit);
  }
  declareResult(unit);
  forEachDeclaration(unit, [&](const VarBlock& block, VarDecl& declaration) {
    ASTNode* const spec = declaration.leaf(VarDecl::kType);
    const ResolvedType type =
        spec != nullptr && !refusesReference(block, declaration)
            ? parts_.types.resolveVariable(*spec, takesOpenArrays(unit, block))
            : ResolvedType();
    if (&declaration == block.leaf(0)) parts_.doubts.judgeQualifiers(unit, block);
    for (int n = VarDecl::kFirstName; n < declaration.leavesCount(); ++n) {
      const auto& name = static_cast<const Text&>(*declaration.leaf(n));
      if (block.section == VarSection::External) {
        checkExternal(unit, declaration, name, type.type);
      } else {
        declareVariable(unit, block, declaration, name, type);
      }
    }
  });
  // Expressions may refer to a constant that was not declared in the end.
  for (auto& [name, constant] : parts_.names.replaceAhead(std::move(outer))) {
    if (constant != nullptr) services_.symbols.keepUndeclared(std::move(constant));
  }
}

void Declarations::declareVariable(UnitSymbol& unit, const VarBlock& block, VarDecl& declaration,
                                   const Text& name, const ResolvedType& resolved) {
  Type* const type = resolved.type;
  const Role role = roleIn(block.section);
  const ASTNode* const spec = declaration.leaf(VarDecl::kType);
  const bool refers = spec != nullptr && type != nullptr && isReferenceSpec(*spec);
  const bool open = asOpenArray(type) != nullptr;
  const bool bits =
      declaration.bitParameter && !open && (role == Role::Input || role == Role::InOut);
  const std::size_t before = messages_.count();
  auto variable = block.constant ? parts_.names.takeAhead(name.text()) : nullptr;
  if (variable == nullptr) {
    variable = std::make_unique<VarSymbol>(
        name.text(), type, role, bits ? vel::SymbolVar::kBitParameter : varKindOf(role), &unit);
  }
  variable->initial = static_cast<Expr*>(declaration.leaf(VarDecl::kInitial));
  variable->typeInitial = resolved.initial;
  variable->constant = block.constant;
  variable->refused = variable->refused || declaration.valueMissing;
  variable->retention = block.retention;
  if (open) variable->indirect = true;
  if (refers) variable->refer();
  if (const ASTNode* const address = declaration.leaf(VarDecl::kAddress)) {
    // Nothing calls a PROGRAM, so its parameters may have fixed addresses.
    if (variable->isParameter() && unit.type() != vel::POUType::Program) {
      say(*address, message::kPlacedParameter, name.text());
    } else if (vel::TreeBuilder::source(*address).back() == '*') {
      parts_.configuredPlaces.declareOpen(*variable, *address);
    } else {
      parts_.locations.place(*variable, *address);
    }
  }
  variable->declared = &name;
  VarSymbol* const declared = unit.addVariable(std::move(variable));
  if (declared == nullptr) {
    VarSymbol& first = *unit.variable(name.text());
    // One of the two may be a part of a broken declaration.
    if (!context_.mayMiss(&unit)) sayRedeclared(name, name.text(), first.declared);
    first.doubtful = first.dataType() != type;
    // Expressions may refer to a constant that was found ahead.
    services_.symbols.keepUndeclared(std::move(variable));
  } else {
    if (declaration.edge != Edge::None) detectEdges(*declared, declaration);
    if (!hasErrorFrom(before)) parts_.doubts.judgeConstant(*declared, block);
  }
}

// Reports a REFERENCE TO where there cannot be one; then its variable has no type.
bool Declarations::refusesReference(const VarBlock& block, VarDecl& declaration) {
  ASTNode& spec = *declaration.leaf(VarDecl::kType);
  if (!isReferenceSpec(spec)) return false;
  const Role role = roleIn(block.section);
  const bool parameter = role == Role::Output || role == Role::InOut;
  const bool fixed = block.constant || declaration.leaf(VarDecl::kAddress) != nullptr ||
                     (declaration.bitParameter && role == Role::Input);
  if (!fixed && !parameter) return false;
  say(spec, message::kNotSupported,
      "References (REFERENCE TO) as outputs, in-out parameters, bit parameters, constants and at "
      "addresses are");
  return true;
}

void Declarations::detectEdges(VarSymbol& input, const VarDecl& declaration) {
  const ASTNode& spec = *declaration.leaf(VarDecl::kType);
  const Type* const type = input.dataType();
  const bool isBool = type == nullptr || type->dataType() == BasicDataType::Bool;
  if (input.role != Role::Input || !isBool || input.owner->type() == vel::POUType::Function) {
    say(spec, message::kEdge, input.name());
    return;
  }
  input.edge = declaration.edge;
  input.edgeState = input.owner->addVariable(std::make_unique<VarSymbol>(
      AstNodeHelper::opExpTextToMd5HexText("EDGE", input.name()),
      services_.symbols.elementary(BasicDataType::Bool), Role::EdgeState, input.owner));
  if (input.edgeState != nullptr) input.edgeState->retention = input.retention;
}

// A variable without its global one is declared as a local, so that its uses are no errors too.
void Declarations::checkExternal(UnitSymbol& unit, VarDecl& declaration, const Text& name,
                                 const Type* type) {
  const VarSymbol* const global = services_.symbols.global(name.text());
  if (global == nullptr) {
    context_.noteMissing(name.text());
    if (!context_.mayMiss(&unit)) {
      parts_.suggestions.addGlobal(say(name, message::kNoGlobal, name.text()), name, name.text());
    }
    unit.addVariable(
        std::make_unique<VarSymbol>(name.text(), const_cast<Type*>(type), Role::Local, &unit));
  } else if (type != nullptr && global->dataType() != nullptr &&
             (!sameType(*type, *global->dataType()) ||
              isReferenceSpec(*declaration.leaf(VarDecl::kType)) != global->reference)) {
    say(*declaration.leaf(VarDecl::kType), message::kExternalType, name.text(),
        displayName(global->dataType()))
        .note(rangeOf(*global->declared), "the global variable is declared here");
    auto doubtful = std::make_unique<VarSymbol>(name.text(), nullptr, Role::Local, &unit);
    doubtful->declared = &name;
    doubtful->doubtful = true;
    unit.addVariable(std::move(doubtful));
  }
}

void Declarations::declareResult(UnitSymbol& unit) {
  if (unit.type() != vel::POUType::Function) return;
  const ASTNode* const spec = unit.node->leaf(Unit::kReturnType);
  if (spec == nullptr) return;
  const ResolvedType type = parts_.types.resolve(*unit.node->leaf(Unit::kReturnType));
  auto result = std::make_unique<VarSymbol>(unit.name(), type.type, Role::Result, &unit);
  result->typeInitial = type.initial;
  result->declared = unit.node->leaf(Unit::kName);
  unit.result = unit.addVariable(std::move(result));
}

// Before the initial value is analysed, which may ask for the constant itself: `SIZEOF(c)`.
void Declarations::computeConstants(const UnitSymbol& unit, const VarDecl& declaration) {
  for (int n = VarDecl::kFirstName; n < declaration.leavesCount(); ++n) {
    const auto& name = static_cast<const Text&>(*declaration.leaf(n));
    VarSymbol* const constant = unit.variable(name.text());
    if (constant != nullptr && constant->constant) parts_.constants.compute(*constant);
  }
}

void Declarations::checkDefault(const UnitSymbol& unit, const VarDecl& declaration) {
  const ASTNode& initial = *declaration.leaf(VarDecl::kInitial);
  std::unordered_set<const VarSymbol*> constants;
  std::vector<const ASTNode*> waiting{&initial};
  while (!waiting.empty()) {
    const ASTNode& value = *waiting.back();
    waiting.pop_back();
    const bool refused = anyNode(value, [&](const ASTNode& node) {
      if (node.type() != vel::ASTType::Expression) return false;
      if (static_cast<const Expr&>(node).kind != ExprKind::Variable) return false;
      const VarSymbol* const named = unit.variable(vel::TreeBuilder::source(node));
      if (named == nullptr) return false;
      if (!named->constant || isComposite(named->dataType())) {
        say(&value == &initial ? node : initial, message::kLocalDefault,
            vel::TreeBuilder::source(*declaration.leaf(VarDecl::kFirstName)), named->name(),
            unit.name());
        return true;
      }
      if (named->initial != nullptr && constants.insert(named).second) {
        waiting.push_back(named->initial);
      }
      return false;
    });
    if (refused) return;
  }
}

void Declarations::analyseInitials(UnitSymbol& unit) {
  forEachDeclaration(unit, [&](const VarBlock& block, VarDecl& declaration) {
    if (declaration.leaf(VarDecl::kInitial) == nullptr) return;
    if (block.constant) computeConstants(unit, declaration);
    const ASTNode& node = *declaration.leaf(VarDecl::kType);
    const auto& spec = static_cast<const TypeSpec&>(isReferenceSpec(node) ? *node.leaf(0) : node);
    const std::size_t before = messages_.count();
    parts_.initials.analyseDeclared(spec.dataType, declaration);
    if (!hasErrorFrom(before)) parts_.doubts.judgeInitial(unit, block, declaration);
    if (unit.type() == vel::POUType::Function && block.section == VarSection::Input) {
      checkDefault(unit, declaration);
    }
    // The analysis may have replaced the node.
    for (int n = VarDecl::kFirstName; n < declaration.leavesCount(); ++n) {
      const auto& name = static_cast<const Text&>(*declaration.leaf(n));
      VarSymbol* const variable = unit.variable(name.text());
      if (variable == nullptr) continue;
      variable->initial = static_cast<Expr*>(declaration.leaf(VarDecl::kInitial));
    }
  });
}

}  // namespace refhost
