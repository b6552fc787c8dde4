// Program units and their variables as symbols.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/symbol.h"
#include "hostkit/folding.h"
#include "refhost/services/progress.h"
#include "refhost/services/typed_constant.h"
#include "refhost/services/types.h"
#include "refhost/syntax/tree.h"

namespace refhost {

class NamedValue;
class UnitSymbol;

// What a variable is to its unit.
enum class Role : std::uint8_t {
  Local,
  Input,
  Output,
  InOut,
  Temp,
  Member,     // of a structure
  Result,     // of a function: the variable that bears its name
  EdgeState,  // hidden: what an edge detection remembers
};

// The number that the plugin reads; those it does not tell apart are the host's own.
constexpr std::int32_t varKindOf(Role role) {
  switch (role) {
    case Role::Input:
      return vel::SymbolVar::kInput;
    case Role::InOut:
      return vel::SymbolVar::kInOut;
    default:
      return 100 + static_cast<std::int32_t>(role);
  }
}

class VarSymbol final : public vel::SymbolVar {
 public:
  VarSymbol(const std::string& name, vel::SymbolDataType* type, Role variableRole, UnitSymbol* unit)
      : VarSymbol(name, type, variableRole, varKindOf(variableRole), unit) {}
  // `kind` where the role alone does not tell it.
  VarSymbol(const std::string& name, vel::SymbolDataType* type, Role variableRole,
            std::int32_t kind, UnitSymbol* unit)
      : SymbolVar(name, type, kind), role(variableRole), owner(unit) {}

  void placeAt(const vel::HeapAddress& address, vel::HeapRawAddr raw) {
    fixedAddress_ = true;
    iecAddress_ = address;
    backendAddress_ = raw;
  }
  // Keeps the variable in the memory image without an address of its own.
  void keepAt(vel::HeapRawAddr raw) {
    inMemory = true;
    backendAddress_ = raw;
  }
  bool isBitParameter() const { return varKind() == kBitParameter; }
  bool isParameter() const {
    return role == Role::Input || role == Role::InOut || role == Role::Output;
  }

  const Role role;
  UnitSymbol* const owner;      // null for a structure's member
  Expr* initial = nullptr;      // null when not given
  Expr* typeInitial = nullptr;  // that its type declares, null when it does not
  bool constant = false;
  // Of a constant: its value when it is a known integer, and whether it depends on itself.
  const TypedConstant* value = nullptr;
  bool refused = false;
  Progress progress = Progress::Waiting;
  Edge edge = Edge::None;
  VarSymbol* edgeState = nullptr;  // with an edge: the value at the last run of the body
  bool inMemory = false;
};

// Null for what is no variable.
inline VarSymbol* asVariable(vel::Symbol* symbol) {
  const bool variable = symbol != nullptr && symbol->symbolType() == vel::Symbol::Variable;
  return variable ? static_cast<VarSymbol*>(symbol) : nullptr;
}

// The data type of a function block's instances.
class InstanceType final : public vel::SymbolFBType {
 public:
  InstanceType(const std::string& name, UnitSymbol* block) : SymbolFBType(name), unit(block) {}

  UnitSymbol* unit;
};

class UnitSymbol final : public vel::SymbolPOU {
 public:
  // `unit` is the declaration in the tree.
  UnitSymbol(vel::InternalInterface* ii, Unit* unit)
      : SymbolPOU(ii, unit->name(), unit->type(), nullptr), node(unit) {
    if (type() == vel::POUType::FunctionBlock) {
      instanceType_ = std::make_unique<InstanceType>(name(), this);
      fbType_ = instanceType_.get();
    }
  }

  // Null when the name is taken.
  VarSymbol* addVariable(std::unique_ptr<VarSymbol> variable) {
    VarSymbol* const added = variable.get();
    if (!byName_.emplace(added->name(), added).second) return nullptr;
    variables_.push_back(std::move(variable));
    if (added->isParameter()) params_.push_back(added);
    return added;
  }
  VarSymbol* variable(std::string_view name) const {
    const auto found = byName_.find(name);
    return found != byName_.end() ? found->second : nullptr;
  }
  // In order of declaration.
  const std::vector<std::unique_ptr<VarSymbol>>& variables() const { return variables_; }

  Unit* const node;
  VarSymbol* result = nullptr;         // of a function: the variable that bears its name
  bool storesEnabled = false;          // a call in it gives its ENO to a variable
  bool standard = false;               // from the prelude
  FoldedMap<NamedValue*> namedValues;  // of enumerations that its declarations hold

 private:
  std::unique_ptr<InstanceType> instanceType_;
  std::vector<std::unique_ptr<VarSymbol>> variables_;
  FoldedMap<VarSymbol*> byName_;
};

}  // namespace refhost
