// Chooses the C names of a program's units, types and variables.
#pragma once

#include <string>

#include "refhost/emit/names.h"
#include "refhost/emit/symbol_names.h"
#include "refhost/services/services.h"

namespace refhost {

class FileNames {
 public:
  FileNames(Services& services, SymbolNames& names) : services_(services), names_(names) {}

  void nameAll();

 private:
  void nameUnits();
  void nameConfiguration();
  void nameGlobals();
  void nameTypes();
  void nameArrays();
  void nameVariables(const UnitSymbol& unit);
  // `name`, changed if it is that of an operator: the C text calls operators by their names.
  std::string avoidOperatorName(const std::string& name) const;

  Services& services_;
  SymbolNames& names_;
  CNames file_{CNames::Scope::File};
};

}  // namespace refhost
