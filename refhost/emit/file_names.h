// Chooses the C names of a program's units, types and variables.
#pragma once

#include <memory>
#include <string>
#include <unordered_set>

#include "refhost/emit/names.h"
#include "refhost/emit/symbol_names.h"
#include "refhost/services/services.h"

namespace refhost {

class FileNames {
 public:
  // `shared`: other C files name them, too. They then fit into a header for C++, and do not depend
  // on declarations elsewhere in the program.
  FileNames(Services& services, SymbolNames& names, bool shared)
      : services_(services),
        names_(names),
        avoided_(shared ? std::make_unique<LibraryNames>() : nullptr),
        file_(CNames::Scope::File, avoided_.get()) {}

  void nameAll();

 private:
  void nameUnits();
  void nameConfiguration();
  void nameGlobals();
  void nameTypes();
  void nameArrays();
  void nameVariables(const UnitSymbol& unit);
  // A name of the file that the program does not contain, so that the local variables of C
  // functions must not hide it.
  std::string derive(const std::string& wanted);
  std::string nameOf(const StructType& structure) const;
  // `name`, changed if it is that of an operator: the C text calls operators by their names.
  std::string avoidOperatorName(const std::string& name) const;

  Services& services_;
  SymbolNames& names_;
  const std::unique_ptr<const LibraryNames> avoided_;  // null unless shared
  CNames file_;
  std::unordered_set<std::string> derived_;
};

}  // namespace refhost
