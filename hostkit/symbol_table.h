// A symbol table, for hosts that do not have one.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/symbol.h"
#include "hostkit/folding.h"

namespace hostkit {

// Contains the elementary types from the start; units and variables are added. Owns its symbols.
// Lookup ignores letter case.
class SymbolTable {
 public:
  SymbolTable();

  // Implements Answers::find. A variable is looked up in its unit, parameters included, and then
  // among the global variables.
  vel::Symbol* find(const char* name, const char* unit, vel::Symbol::Type kind) const;
  // A variable or parameter of `unit`, or a global variable when `unit` is empty.
  vel::SymbolVar* variable(std::string_view name, std::string_view unit) const;
  vel::SymbolDataType* type(std::string_view name) const;
  // Implements Answers::addUnit: false when a unit or a data type has the name already.
  bool addUnit(vel::SymbolPOU* unit);
  // Adds a variable of `unit`, or a global one when `unit` is empty. Null when the name is taken.
  vel::SymbolVar* addVariable(const std::string& unit, std::unique_ptr<vel::SymbolVar> variable);

 private:
  std::vector<std::unique_ptr<vel::SymbolDataType>> ownedTypes_;
  std::vector<std::unique_ptr<vel::SymbolPOU>> ownedUnits_;
  std::vector<std::unique_ptr<vel::SymbolVar>> ownedVariables_;
  FoldedMap<vel::SymbolDataType*> types_;
  FoldedMap<vel::SymbolPOU*> units_;
  std::unordered_map<std::string, FoldedMap<vel::SymbolVar*>, vel::HashIgnoringCase,
                     vel::EqualIgnoringCase>
      variables_;  // by name of the unit
};

}  // namespace hostkit
