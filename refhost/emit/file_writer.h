#pragma once

#include <string>

#include "refhost/emit/file_context.h"
#include "refhost/emit/place.h"

namespace refhost {

class FileWriter {
 public:
  // The program of `services` must have been analysed. text() sets `names`. `sources` is null if
  // the C does not name their lines.
  FileWriter(Services& services, SymbolNames& names, Diagnostics& messages,
             const SourceManager* sources = nullptr);

  // The C file of the program. Reports an error for each call for which its operator generates
  // nothing. Where the C names lines, it needs withOwnLines().
  std::string text();

 private:
  void appendUnits(std::string& out);
  void appendStaticTexts(std::string& out) const;
  void appendStructureInits(std::string& out);

  SymbolNames& names_;
  FileContext file_;
};

// A variable of a PROGRAM or a global one, for C code that is appended to the file. `data` is the
// object that contains it unless it has an address.
Place globalPlace(const SymbolNames& names, const std::string& data, const VarSymbol& variable);

}  // namespace refhost
