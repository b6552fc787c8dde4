// Gives the units, types and variables of a program their C names.
#pragma once

#include <string>

#include "refhost/emit/names.h"
#include "refhost/services/services.h"

namespace refhost {

class FileNames {
 public:
  explicit FileNames(Services& services) : services_(services) {}

  void nameAll();

 private:
  void nameUnits();
  void nameGlobals();
  void nameTypes();
  void nameArrays();
  void nameVariables(UnitSymbol& unit);
  // C calls operators by their names, which no variable may hide.
  std::string unoperated(const std::string& name) const;

  Services& services_;
  CNames names_{CNames::Scope::File};
};

}  // namespace refhost
