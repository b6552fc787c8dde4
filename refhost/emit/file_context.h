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

struct FileContext {
  // The program must have been analysed. `reports` gets an error for each call for which its
  // operator generates nothing. `linesOf` are the sources if the C names their lines, else null.
  FileContext(Services& servicesOfProgram, const SymbolNames& namesInC, Diagnostics& reports,
              const SourceManager* linesOf = nullptr)
      : services(servicesOfProgram),
        names(namesInC),
        messages(reports),
        sources(linesOf),
        effects(services.symbols) {}

  Services& services;
  const SymbolNames& names;
  Diagnostics& messages;
  const SourceManager* const sources;
  const Effects effects;
  StartValues startValues;
  std::unordered_set<const vel::STOperator*> usedOperators;
  std::vector<std::string> staticTexts;  // of the used operators, in order of their first calls
};

}  // namespace refhost
