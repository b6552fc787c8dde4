// Semantic analysis: declares what the units declare, gives every expression its
// type, asks the operators to check their calls, and judges assignments.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/message.h"
#include "refhost/messages.h"
#include "refhost/prelude/prelude.h"
#include "refhost/semantics/bindings.h"
#include "refhost/services/services.h"
#include "refhost/syntax/tree.h"

namespace vel {
class OpManagerAPI;
}

namespace refhost {

class Analyser {
 public:
  Analyser(Services& services, Tree& tree, Prelude& prelude,
           std::vector<vel::VELMessage>& messages);

  // Analyses every unit of the tree.
  void run();

 private:
  using Symbol = vel::Symbol;
  using Type = vel::SymbolDataType;

  // declarations.cpp
  void declareUnits();
  // The program's unit of this name, or the prelude's where nothing of the program has
  // it, declared now; null when there is none.
  UnitSymbol* unitNamed(const std::string& name);
  void declareVariables(UnitSymbol& unit);
  void declareVariable(UnitSymbol& unit, const VarBlock& block, VarDecl& declaration,
                       const Text& name, Type* type);
  void declareResult(UnitSymbol& unit);
  void place(VarSymbol& variable, const ASTNode& address, const Type* type);
  Type* resolveType(const ASTNode& spec);
  void analyseInitials(UnitSymbol& unit);
  void refuseRecursiveBlocks();

  // expressions.cpp
  // Analyses leaf `index` of `parent`, an Expr, and returns what stands there then.
  Expr& analyseLeaf(ASTNode& parent, int index);
  Type* typeExpression(Expr& expr);
  Type* typeVariable(Expr& expr);
  Type* typeAccess(Expr& expr);
  Type* typeMember(Expr& expr);
  Type* typeBit(Expr& expr);
  Type* typeUnary(Expr& expr);
  Type* typeBinary(Expr& expr);
  // A direct address in the project's notation.
  bool isAddress(std::string_view text) const;
  bool becomesAddress(ASTNode& parent, int index);
  // Appends an error and returns false when the expression cannot be written.
  bool requireWritable(const Expr& target);

  // calls.cpp
  Type* analyseCall(Call& call);
  Type* callOperator(Call& call);
  Type* callFunction(Call& call, UnitSymbol& function);
  Type* callInstance(Call& call, VarSymbol& instance, UnitSymbol& block);
  bool leavesNameToOperator(const Call& call, int index) const;
  void declareEdgeState(const Call& call);
  void judgeOperands(const Call& call);
  void analyseOperandType(Call& call);
  // Appends an error when what is called gives no value.
  void requireValue(const Call& call, const Type* type);
  // Puts named arguments at the positions that `positionOf` gives their names. False, with an
  // error appended, when one fits no parameter.
  bool orderArguments(Call& call, const std::function<int(std::string_view)>& positionOf);
  void analyseArguments(Call& call, UnitSymbol& callee);
  void checkArgument(const Binding& binding, const UnitSymbol& callee);
  void requirePassable(const Binding& binding);

  // standard_calls.cpp
  Type* callStandard(Call& call);
  Type* callOperation(Call& call);
  Type* callTextFunction(Call& call);

  // assignments.cpp
  // Judges `source`, of type `from`, given to a place of type `to`; messages stand at
  // `at`. `call` is the operator's call that `source` is, if it is one: what its check
  // has said of the assignment is not said again.
  void judge(const Type* to, const Type* from, const ASTNode& source, vel::TextLocation at,
             const Call* call = nullptr);
  void judge(const Type* to, const Type* from, const ASTNode& source) {
    judge(to, from, source, source.pos());
  }
  void judgeUntyped(const Type& to, const ASTNode& source, vel::TextLocation at);
  bool hasBeenSaid(const vel::VELMessage& message, const Call& call) const;

  // statements.cpp
  void analyseStatements(ASTNode* list);
  void analyseStatement(ASTNode& statement);
  void analyseAssignment(ASTNode& statement);
  void analyseIf(ASTNode& statement);
  void analyseCase(ASTNode& statement);
  void analyseLabels(ASTNode& labels);
  void analyseFor(ASTNode& statement);
  void analyseCondition(ASTNode& parent, int index);

  template <typename... Args>
  void say(const ASTNode& where, const MessageFormat& format, const Args&... args) {
    report(messages_, where.pos(), format, {std::string_view(args)...});
  }
  bool hasErrorFrom(std::size_t first) const;

  Services& services_;
  Tree& tree_;
  Prelude& prelude_;
  std::vector<vel::VELMessage>& messages_;
  UnitSymbol* unit_ = nullptr;  // being analysed
  std::string unitName_;
  // The messages that the latest check of an operator has appended.
  struct {
    const Call* call = nullptr;
    std::size_t first = 0;
    std::size_t last = 0;
  } checked_;
  int loops_ = 0;  // around the statement being analysed
};

// The name that messages give a type: a bit string's own, else the IEC name of its
// number.
std::string displayName(const vel::SymbolDataType* type);

}  // namespace refhost
