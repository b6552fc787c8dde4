// What one file declares, found without an analysis: for files that are in no program.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "refhost/editor/symbols.h"

namespace refhost {

struct FileDeclaration {
  struct Parameter {
    std::string name;
    SymbolKind kind;
  };

  // True if other files can name it: a unit, a type, a value of a type, a global variable.
  bool isShared() const;

  SymbolKind kind = SymbolKind::Variable;
  bool constant = false;
  std::string name;  // as declared; of a test its title, without quotes
  std::string file;  // its path
  // Of the name in the file, in bytes.
  std::uint32_t offset = 0;
  std::uint32_t length = 0;
  std::string container;              // the type of a value; empty for none
  std::string type;                   // of a variable, or of a FUNCTION's result, as written
  std::vector<Parameter> parameters;  // of a FUNCTION
};

// Units, tests, types with their values, global variables and configurations, without those that
// have no name.
std::vector<FileDeclaration> declarationsOf(const std::string& path, const std::string& text);

}  // namespace refhost
