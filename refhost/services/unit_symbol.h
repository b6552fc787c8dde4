// Program units and their variables as symbols.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/symbol.h"
#include "hostkit/folding.h"
#include "refhost/services/typed_constant.h"
#include "refhost/services/types.h"
#include "refhost/syntax/tree.h"

namespace refhost {

// How far the analysis of a declaration that others name has come.
enum class Progress : std::uint8_t { Waiting, Open, Done };

class NamedValue;
class UnitSymbol;

enum class Role : std::uint8_t {
  Local,
  Input,
  Output,
  InOut,
  Temp,
  Member,     // of a structure
  Result,     // the variable that has the name of its function
  EdgeState,  // hidden: the operand of an edge detection at its last call
};

// The kind that the plugin reads. It distinguishes no more than inputs and in-out parameters, so
// the other numbers are free.
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
  // For a `kind` that the role does not imply: a bit parameter.
  VarSymbol(const std::string& name, vel::SymbolDataType* type, Role variableRole,
            std::int32_t kind, UnitSymbol* unit)
      : SymbolVar(name, type, kind),
        role(variableRole),
        owner(unit),
        indirect(variableRole == Role::InOut) {}

  void placeAt(const vel::HeapAddress& address, vel::HeapRawAddr raw) {
    fixedAddress_ = true;
    iecAddress_ = address;
    backendAddress_ = raw;
  }
  // True of a variable at an address that the program names.
  bool isLocated() const { return iecAddress().area != 0; }
  // True of a bit of device memory.
  bool isDeviceBit() const {
    return iecAddress().isBitMode() || (openAddress != nullptr && dataType() != nullptr &&
                                        dataType()->dataType() == BasicDataType::Bool);
  }
  // Keeps the variable in device memory without an address that the program could name.
  void keepAt(vel::HeapRawAddr raw) {
    inMemory = true;
    backendAddress_ = raw;
  }
  // Makes it a REFERENCE TO its type.
  void refer() { indirect = reference = true; }
  // True of a variable in the structure of its unit, where it is kept between calls.
  bool isKept() const { return role != Role::Temp && !isLocated() && !inMemory; }
  bool isBitParameter() const { return varKind() == kBitParameter; }
  bool isParameter() const {
    return role == Role::Input || role == Role::InOut || role == Role::Output;
  }

  const Role role;
  UnitSymbol* const owner;            // null for a member of a structure
  bool indirect;                      // holds the address of its value, which is another variable's
  bool reference = false;             // REFERENCE TO: indirect, and bound by the program
  const ASTNode* declared = nullptr;  // its name in the declaration; null for a hidden variable
  Expr* initial = nullptr;            // null for none
  Expr* typeInitial = nullptr;        // declared with its type; null for none
  bool constant = false;
  Retention retention = Retention::Unsaid;
  const TypedConstant* value = nullptr;  // of a constant; null if it is not a known integer
  bool refused = false;                  // a constant without a valid value
  bool doubtful = false;                 // declared a second time with another type
  Progress progress = Progress::Waiting;
  Edge edge = Edge::None;
  VarSymbol* edgeState = nullptr;  // holds the input's value at the previous call, for an edge
  bool inMemory = false;
  const ASTNode* openAddress = nullptr;  // `%Q*`, whose place VAR_CONFIG gives; null for none
  bool placedByInstance = false;         // each instance has a place of its own
  std::uint32_t uses = 0;                // expressions that name it
  std::uint32_t writes = 0;              // those of them that only assign to it or to a part of it
};

// Null for a symbol that is not a variable.
inline VarSymbol* asVariable(vel::Symbol* symbol) {
  const bool variable = symbol != nullptr && symbol->symbolType() == vel::Symbol::Variable;
  return variable ? static_cast<VarSymbol*>(symbol) : nullptr;
}

// The REFERENCE TO that `node` names; null for all else.
const VarSymbol* referenceNamed(const ASTNode& node);

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
      fbType_ = makeInstanceType();
    }
  }

  // The type of its instances: of those of a PROGRAM only tests have any.
  InstanceType* makeInstanceType() {
    if (instanceType_ == nullptr) instanceType_ = std::make_unique<InstanceType>(name(), this);
    return instanceType_.get();
  }
  // Null when there are none.
  const InstanceType* instanceType() const { return instanceType_.get(); }
  bool isTest() const { return node->testPart != TestPart::None; }

  // Null when the name is taken; then the caller keeps the variable.
  VarSymbol* addVariable(std::unique_ptr<VarSymbol>&& variable) {
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
  // The same for a variable of the SETUP, too, unless it ends with that.
  VarSymbol* visible(std::string_view name) const {
    VarSymbol* const own = variable(name);
    if (own != nullptr || outer == nullptr) return own;
    VarSymbol* const shared = outer->variable(name);
    return shared != nullptr && shared->role != Role::Temp ? shared : nullptr;
  }
  // In order of declaration.
  const std::vector<std::unique_ptr<VarSymbol>>& variables() const { return variables_; }

  Unit* const node;
  VarSymbol* result = nullptr;        // of a function, null if it returns no value
  bool storesEnabled = false;         // contains a call that stores its ENO
  bool standard = false;              // from the prelude
  bool instantiated = false;          // a PROGRAM of which a configuration or a test has instances
  const UnitSymbol* outer = nullptr;  // of a TEST or TEARDOWN: the SETUP of its file, null for none
  // Of anonymous enumerations in its declarations; null for a value of several.
  FoldedMap<NamedValue*> namedValues;

 private:
  std::unique_ptr<InstanceType> instanceType_;
  std::vector<std::unique_ptr<VarSymbol>> variables_;
  FoldedMap<VarSymbol*> byName_;
};

}  // namespace refhost
