// Shared by the writers of one file.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "host/message.h"
#include "refhost/emit/effects.h"
#include "refhost/emit/start_values.h"
#include "refhost/emit/symbol_names.h"
#include "refhost/services/services.h"

namespace refhost {

struct FileContext {
  // The program must have been analysed. Calls for which an operator generates nothing are
  // reported to `reports`.
  FileContext(Services& servicesOfProgram, const SymbolNames& namesInC,
              std::vector<vel::VELMessage>& reports)
      : services(servicesOfProgram),
        names(namesInC),
        messages(reports),
        effects(services.symbols) {}

  Services& services;
  const SymbolNames& names;
  std::vector<vel::VELMessage>& messages;
  const Effects effects;
  StartValues startValues;
  // Of the operators called so far, in order of their first calls.
  std::unordered_set<const vel::STOperator*> usedOperators;
  std::vector<std::string> staticTexts;
};

}  // namespace refhost
