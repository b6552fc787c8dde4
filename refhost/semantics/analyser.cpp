#include "refhost/semantics/analyser.h"

namespace refhost {

void Analyser::run(bool tests) {
  Declarations& declarations = parts_.declarations;
  SymbolTable& symbols = context_.services.symbols;
  context_.broken = context_.messages.hasErrors();
  declarations.declareUnits();
  if (tests) parts_.tests.declare();
  parts_.configurations.declare();
  // A unit of the prelude that the program names is appended to the units while they are analysed.
  const std::vector<UnitSymbol*>& units = symbols.units();
  const std::size_t own = units.size();
  declarations.makeGlobals();
  parts_.types.declareTypes();
  if (UnitSymbol* const globals = symbols.globals()) declarations.declareVariables(*globals);
  for (std::size_t i = 0; i < own; ++i) declarations.declareVariables(*units[i]);
  parts_.sizes.checkTypes();
  parts_.types.analyseTypeInitials();
  if (UnitSymbol* const globals = symbols.globals()) analyseUnit(*globals);
  parts_.configurations.analyseConfigurations();
  parts_.configuredPlaces.analyse(!context_.broken);
  if (tests) parts_.tests.enterInstances();
  for (std::size_t i = 0; i < units.size(); ++i) analyseUnit(*units[i]);
  parts_.sizes.checkUnits();
  parts_.doubts.judgeVariables();
}

void Analyser::analyseUnit(UnitSymbol& unit) {
  context_.enter(&unit);
  context_.judgesReads = parts_.doubts.judgesReads(unit);
  parts_.declarations.analyseInitials(unit);
  parts_.statements.analyseStatements(unit.node->leaf(Unit::kBody));
}

}  // namespace refhost
