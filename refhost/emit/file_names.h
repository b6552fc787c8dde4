// Gives the units, types and variables of a program their C names.
#pragma once

#include <string>

#include "refhost/emit/names.h"
#include "refhost/emit/symbol_names.h"
#include "refhost/services/services.h"

namespace refhost {

class FileNames {
 public:
  // Sets `names`.
  FileNames(Services& services, SymbolNames& names) : services_(services), names_(names) {}

  void nameAll();

 private:
  void nameUnits();
  void nameGlobals();
  void nameTypes();
  void nameArrays();
  void nameVariables(const UnitSymbol& unit);
  // C calls operators by their names, which no variable may hide.
  std::string unoperated(const std::string& name) const;

  Services& services_;
  SymbolNames& names_;
  CNames file_{CNames::Scope::File};
};

}  // namespace refhost
