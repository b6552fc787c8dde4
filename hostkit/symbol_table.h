// A symbol table for hosts that have none of their own.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/symbol.h"
#include "hostkit/folding.h"

namespace hostkit {

// Knows the elementary types, and takes units and variables. Owns its symbols. Names match in
// any letter case.
class SymbolTable {
 public:
  SymbolTable();

  // As Answers::find asks. A variable is looked up in its unit, whose parameters belong to it,
  // then among those of all units.
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) const;
  // The variable or parameter of the unit, or the variable of all units when that is empty.
  vel::SymbolVar* variable(std::string_view name, std::string_view unit) const;
  vel::SymbolDataType* type(std::string_view name) const;
  // As Answers::addUnit asks: false when a unit or a data type has the name.
  bool addUnit(vel::SymbolPOU* unit);
  // Adds a variable of `unit`, or of all units when that is empty. Null when the name is taken.
  vel::SymbolVar* addVariable(const std::string& unit, std::unique_ptr<vel::SymbolVar> variable);

 private:
  std::vector<std::unique_ptr<vel::SymbolDataType>> ownedTypes_;
  std::vector<std::unique_ptr<vel::SymbolPOU>> ownedUnits_;
  std::vector<std::unique_ptr<vel::SymbolVar>> ownedVariables_;
  FoldedMap<vel::SymbolDataType*> types_;
  FoldedMap<vel::SymbolPOU*> units_;
  std::unordered_map<std::string, FoldedMap<vel::SymbolVar*>, vel::HashIgnoringCase,
                     vel::EqualIgnoringCase>
      variables_;  // by unit
};

}  // namespace hostkit
