// Writes a program as several C files: for each unit a C file and a header, for each structure a
// header. A header changes only when what it declares changes, and depends on headers of the types
// of its variables alone.
#pragma once

#include <string>
#include <vector>

#include "refhost/emit/requirements.h"
#include "refhost/translated_file.h"

namespace refhost {

class SplitWriter {
 public:
  // The program of `services` must have been analysed. files() sets `names`. With `lines` the C
  // names the lines of the sources.
  SplitWriter(Services& services, const SourceManager& sources, SymbolNames& names,
              Diagnostics& messages, bool lines)
      : names_(names), file_(services, sources, names, messages, {true, lines}) {}

  // Reports an error for each call for which its operator generates nothing. Only once.
  std::vector<TranslatedFile> files();

 private:
  void addProgram();
  void addStructure(const StructType& structure);
  void addUnit(const UnitSymbol& unit);
  void addStandardUnit(const UnitSymbol& unit);
  void addConfiguration();
  void addStructureInits();
  void addAll();

  // The functions that `write` appends to a text, and the operators' texts for them. Sets `named`.
  struct Code {
    std::string text;
    NamedSymbols named;
  };
  template <typename Write>
  Code code(const Write& write);
  // What a header declares: the structure of a unit, its variables and functions.
  std::string interfaceOf(const UnitSymbol& unit);
  void addHeader(const std::string& name, const Requirements& needs, const std::string& text);
  // `definitions` are those of variables.
  void addSource(const std::string& name, const Code& code, const std::string& definitions);

  SymbolNames& names_;
  FileContext file_;
  const SplitNames* files_ = nullptr;  // while files() runs
  std::vector<TranslatedFile> written_;
};

}  // namespace refhost
