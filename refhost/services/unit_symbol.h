// Program units and their variables as symbols.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/symbol.h"
#include "refhost/services/folded.h"
#include "refhost/services/types.h"
#include "refhost/syntax/tree.h"

namespace refhost {

class UnitSymbol;

// Kinds of variables beside those that the plugin knows (vel::SymbolVar).
namespace var_kind {
constexpr std::int32_t kLocal = 1;
constexpr std::int32_t kOutput = 2;
constexpr std::int32_t kTemp = 3;
constexpr std::int32_t kReturn = 5;
constexpr std::int32_t kEdgeState = 6;  // hidden: what an edge detection remembers
}  // namespace var_kind

class VarSymbol final : public vel::SymbolVar {
 public:
  VarSymbol(const std::string& name, vel::SymbolDataType* type, std::int32_t kind, UnitSymbol* unit)
      : SymbolVar(name, type, kind), owner(unit) {}

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
  bool isParameter() const {
    return varKind() == kInput || varKind() == kInOut || varKind() == var_kind::kOutput;
  }

  UnitSymbol* owner;
  Expr* initial = nullptr;  // null when not given
  bool constant = false;
  bool inMemory = false;
  std::string cName;  // set by the emission
};

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
  VarSymbol* result = nullptr;  // of a function: the variable that bears its name

  // Set by the emission: the unit's function or structure, and what else it becomes.
  std::string cName;
  std::string cInit;
  std::string cBody;  // of a function block
  std::string cScan;  // of a program
  std::string cData;  // of a program: its variables

 private:
  std::unique_ptr<InstanceType> instanceType_;
  std::vector<std::unique_ptr<VarSymbol>> variables_;
  FoldedMap<VarSymbol*> byName_;
};

}  // namespace refhost
