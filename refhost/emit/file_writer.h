// The C file of a program.
#pragma once

#include <string>
#include <vector>

#include "refhost/emit/file_context.h"
#include "refhost/emit/place.h"

namespace refhost {

class FileWriter {
 public:
  // `services` know the analysed program. `names` is set by text().
  FileWriter(Services& services, SymbolNames& names, std::vector<vel::VELMessage>& messages);

  // The whole file. Gives the symbols their C names and appends an error to the messages for
  // each call for which its operator generates nothing.
  std::string text();

 private:
  void appendUnits(std::string& out);
  void appendStaticTexts(std::string& out) const;
  void appendStructureInits(std::string& out);

  SymbolNames& names_;
  FileContext file_;
};

// A variable of a PROGRAM or a global one as code behind the generated file sees it.
Place globalPlace(const SymbolNames& names, const VarSymbol& variable);

}  // namespace refhost
