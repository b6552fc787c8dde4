#include "refhost/semantics/analyser.h"

namespace refhost {

Analyser::Analyser(Services& services, Tree& tree, Prelude& prelude,
                   std::vector<vel::VELMessage>& messages)
    : services_(services), tree_(tree), prelude_(prelude), messages_(messages) {}

void Analyser::run() {
  declareUnits();
  // What the program names of the prelude joins its units behind its own.
  const std::vector<UnitSymbol*>& units = services_.symbols.units();
  const std::size_t own = units.size();
  makeGlobals();
  declareTypes();
  if (UnitSymbol* const globals = services_.symbols.globals()) declareVariables(*globals);
  for (std::size_t i = 0; i < own; ++i) declareVariables(*units[i]);
  refuseRecursiveTypes();
  analyseTypeInitials();
  if (UnitSymbol* const globals = services_.symbols.globals()) analyseUnit(*globals);
  analyseConfigurations();
  for (std::size_t i = 0; i < units.size(); ++i) analyseUnit(*units[i]);
}

void Analyser::analyseUnit(UnitSymbol& unit) {
  unit_ = &unit;
  unitName_ = unit.name();
  unknown_.clear();
  analyseInitials(unit);
  analyseStatements(unit.node->leaf(Unit::kBody));
}

void Analyser::sayUnknown(const ASTNode& where, const MessageFormat& format,
                          std::string_view name) {
  if (unknown_.emplace(name, true).second) say(where, format, name);
}

bool Analyser::hasErrorFrom(std::size_t first) const {
  for (std::size_t i = first; i < messages_.size(); ++i) {
    if (messages_[i].severity == static_cast<int>(Severity::Error)) return true;
  }
  return false;
}

}  // namespace refhost
