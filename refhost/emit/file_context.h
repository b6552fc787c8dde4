// The context that the writers of one file share.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "refhost/diagnostics.h"
#include "refhost/emit/effects.h"
#include "refhost/emit/start_values.h"
#include "refhost/emit/symbol_names.h"
#include "refhost/services/services.h"
#include "refhost/syntax/source.h"

namespace refhost {

struct FileForm {
  bool shared = false;  // other C files use the program's functions and variables
  bool lines = false;   // the C names the lines of the sources
};

// The call of an assertion, and the types in which the values of its operands are shown.
struct AssertionSite {
  const Call* call;
  std::vector<const vel::SymbolDataType*> shown;
};

struct FileContext {
  // The program must have been analysed. `reports` gets an error for each call for which its
  // operator generates nothing.
  FileContext(Services& servicesOfProgram, const SourceManager& sourcesOfProgram,
              const SymbolNames& namesInC, Diagnostics& reports, FileForm form = {})
      : services(servicesOfProgram),
        sources(sourcesOfProgram),
        names(namesInC),
        messages(reports),
        shared(form.shared),
        lines(form.lines),
        effects(services.symbols) {}

  // True unless other C files may use the functions of the unit. Each file has its own ones of the
  // standard blocks, which are small.
  bool isInternal(const UnitSymbol& unit) const { return !shared || unit.standard; }
  const char* linkage(const UnitSymbol& unit) const { return isInternal(unit) ? "static " : ""; }
  // For what belongs to no unit.
  const char* linkage() const { return shared ? "" : "static "; }
  // Forgets the operators of the file before.
  void beginFile() {
    usedOperators.clear();
    staticTexts.clear();
  }

  Services& services;
  const SourceManager& sources;
  const SymbolNames& names;
  Diagnostics& messages;
  const bool shared;
  const bool lines;
  const Effects effects;
  StartValues startValues;
  std::unordered_set<const vel::STOperator*> usedOperators;
  std::vector<AssertionSite> assertions;  // of unit tests, by their numbers
  std::vector<std::string> staticTexts;   // of the used operators, in order of their first calls
};

}  // namespace refhost
