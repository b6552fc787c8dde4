// Declarations of units and of their variables.
#pragma once

#include <string>
#include <string_view>

#include "refhost/semantics/part.h"
#include "refhost/semantics/types.h"

namespace refhost {

class Declarations : public Part {
 public:
  using Part::Part;

  void declareUnits();
  // The program's unit of this name. If the program declares nothing of the name, the prelude's
  // unit, which is declared by this call. Null when there is neither.
  UnitSymbol* unitNamed(const std::string& name);
  void makeGlobals();
  void declareVariables(UnitSymbol& unit);
  // True if the unit that is analysed or a VAR_GLOBAL declares it, whether it is known already or
  // not.
  bool declaresVariable(std::string_view name) const;
  void analyseInitials(UnitSymbol& unit);
  // Checks the default of an input of a function, which callers evaluate, or of a member of a
  // structure: the variables of `unit` are out of reach there.
  void checkDefault(const UnitSymbol& unit, const VarDecl& declaration);

 private:
  void constantsAhead(UnitSymbol& unit);
  void declareVariable(UnitSymbol& unit, const VarBlock& block, VarDecl& declaration,
                       const Text& name, const ResolvedType& resolved);
  void declareResult(UnitSymbol& unit);
  bool refusesReference(const VarBlock& block, VarDecl& declaration);
  void computeConstants(const UnitSymbol& unit, const VarDecl& declaration);
  // R_EDGE and F_EDGE: the body sees the edges of the input, not its value.
  void detectEdges(VarSymbol& input, const VarDecl& declaration);
  void checkExternal(UnitSymbol& unit, VarDecl& declaration, const Text& name, const Type* type);
};

}  // namespace refhost
