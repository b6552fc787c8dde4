// Calls of operators, functions and function block instances.
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

  // The type of the result, null when there is none or the call is refused.
  // `wanted` is the type that the context expects, null for none.
  Type* analyseCall(Call& call, const Type* wanted = nullptr);
  // Reports an error when the callee returns no value.
  void requireValue(const Call& call, const Type* type);
  // Sorts the named arguments, behind the positional ones, by the positions that `positionOf`
  // returns for their names. Reports an error and returns false when a name is not that of a
  // parameter.
  bool orderArguments(Call& call, const std::function<int(std::string_view)>& positionOf);
  void analyseArguments(Call& call, UnitSymbol& callee);
  // Moves EN and ENO from the argument list into `call`. `callee` is null for operators and
  // standard functions, which declare no parameters.
  void takeEnabling(Call& call, const UnitSymbol* callee);

 private:
  Type* callOperator(Call& call, const Type* wanted);
  void sayNotAccepted(const Call& call);
  void requireCapitals(const Call& call);
  bool analyseOperands(const Call& call, ASTNode& list, const Type* wanted);
  void adaptLiterals(const Call& call, const ASTNode& list, const Type* wanted);
  void widenLowest(Expr& number);
  bool refusesDerived(const Call& call);
  bool refusesLimited(const Call& call);
  bool refusesPassed(const Call& call, const Type* wanted);
  void checkSelected(const Call& call);
  Type* callFunction(Call& call);
  Expr* nameOfInstance(const Call& call);
  Type* callInstance(Call& call);
  bool leavesNameToOperator(const Call& call, int index) const;
  void suggestOperand(const Call& call, std::size_t before);
  void declareEdgeState(const Call& call);
  Type* resultOf(Call& call, Type* named, const Type* wanted);
  static Type* chosenEnumeration(const Call& call, const Type* wanted);
  static bool choosesBeyond(const Call& call, const Type& named);
  Type* chosenType(const Call& call);
  Type* callReference(Call& call);
  void checkOperands(const Call& call);
  void checkChoice(const Call& call);
  void checkConverted(const Call& call, const Expr& operand);
  void analyseOperandType(Call& call);
  void checkArgument(const Binding& binding, const UnitSymbol& callee);
  void requirePassable(const Binding& binding);
  static Argument** enablingPlace(Call& call, const ASTNode& node, const UnitSymbol* callee);
  const Callee& calleeNamed(const char* name);

  std::unordered_map<const char*, Callee*> callees_;  // by interned name; the tree owns them
};

}  // namespace refhost
