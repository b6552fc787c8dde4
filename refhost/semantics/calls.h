// Calls of operators, functions and instances.
#pragma once

#include <functional>
#include <string_view>
#include <unordered_map>

#include "refhost/semantics/bindings.h"
#include "refhost/semantics/part.h"

namespace refhost {

class Calls : public Part {
 public:
  using Part::Part;

  // The type of what the call gives, null when it gives nothing or is refused.
  Type* analyseCall(Call& call);
  // Appends an error when what is called gives no value.
  void requireValue(const Call& call, const Type* type);
  bool isInError(const Expr& expr) const;
  // Puts named arguments at the positions that `positionOf` gives their names. False, with an
  // error appended, when one fits no parameter.
  bool orderArguments(Call& call, const std::function<int(std::string_view)>& positionOf);
  void analyseArguments(Call& call, UnitSymbol& callee);
  // Takes EN and ENO out of the arguments of a call of `callee`, null for one without
  // declarations.
  void takeEnabling(Call& call, const UnitSymbol* callee);

 private:
  Type* callOperator(Call& call);
  Type* callFunction(Call& call);
  Expr* nameOfInstance(const Call& call);
  Type* callInstance(Call& call);
  bool leavesNameToOperator(const Call& call, int index) const;
  void declareEdgeState(const Call& call);
  Type* resultOf(Call& call, Type* named);
  Type* callReference(Call& call);
  void judgeOperands(const Call& call);
  void judgeChoice(const Call& call);
  void judgeConverted(const Call& call, const Expr& operand);
  void analyseOperandType(Call& call);
  void checkArgument(const Binding& binding, const UnitSymbol& callee);
  void requirePassable(const Binding& binding);
  static Argument** enablingPlace(Call& call, const ASTNode& node, const UnitSymbol* callee);
  const Callee& calleeNamed(const char* name);

  std::unordered_map<const char*, Callee*> callees_;  // by name, which is interned; in the tree
};

}  // namespace refhost
