// Semantic analysis: declares what the units declare, gives every expression its
// type, asks the operators to check their calls, and judges assignments.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
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

  // A type, null when it is not known, and the initial value that its declaration gives.
  struct ResolvedType {
    Type* type = nullptr;
    Expr* initial = nullptr;
  };
  struct DeclaredType {
    enum class State : std::uint8_t { Waiting, Open, Known };
    explicit DeclaredType(ASTNode* declaration) : node(declaration) {}
    ASTNode* node;  // the TypeDecl
    ResolvedType resolved;
    State state = State::Waiting;
  };

  // declarations.cpp
  void declareUnits();
  // The program's unit of this name, or the prelude's where nothing of the program has
  // it, declared now; null when there is none.
  UnitSymbol* unitNamed(const std::string& name);
  void makeGlobals();
  void constantsAhead(UnitSymbol& unit);
  void declareVariables(UnitSymbol& unit);
  void declareVariable(UnitSymbol& unit, const VarBlock& block, VarDecl& declaration,
                       const Text& name, const ResolvedType& resolved);
  void declareResult(UnitSymbol& unit);
  // The body sees the changes of the input, not its value.
  void detectEdges(VarSymbol& input, const VarDecl& declaration);
  void checkExternal(UnitSymbol& unit, VarDecl& declaration, const Text& name, const Type* type);
  void place(VarSymbol& variable, const ASTNode& address, const Type* type);
  void analyseUnit(UnitSymbol& unit);
  void analyseInitials(UnitSymbol& unit);

  // data_types.cpp
  void declareTypes();
  ResolvedType resolveDeclared(DeclaredType& declared);
  ResolvedType resolve(ASTNode& node, const std::string& name = {});
  ResolvedType resolveName(const TypeSpec& spec);
  Type* resolveString(TypeSpec& spec);
  std::optional<Bounds> resolveRange(ASTNode& range);
  Type* resolveSubrange(TypeSpec& spec, const std::string& name);
  Type* resolveEnumeration(TypeSpec& spec, const std::string& name);
  Type* resolveArray(TypeSpec& spec);
  void declareMembers(StructType& structure, ASTNode& spec);
  std::string inPlaceName(const std::string& kind);
  void analyseTypeInitials();
  void refuseRecursiveTypes();

  // initials.cpp
  // Analyses leaf `index` of `parent`, given to a variable of type `to`, null when that is
  // not known.
  void analyseInitial(const Type* to, ASTNode& parent, int index);
  void analyseArrayValue(const Type* to, Expr& value);
  std::int64_t countElements(const ArrayType& array, Expr& list, int first);
  std::int64_t countRepeated(const ArrayType& array, Expr& repeat);
  void repeatByName(Expr& list, int index);
  void analyseStructValue(const Type* to, Expr& value);

  // accesses.cpp
  Type* typeVariable(Expr& expr);
  Type* typeAccess(Expr& expr);
  Type* typeMember(Expr& expr);
  Type* typeBit(Expr& expr);
  Type* typeElement(Expr& expr);
  Type* typeDereference(Expr& expr);
  // Appends an error and returns false when the expression cannot be written.
  bool requireWritable(const Expr& target);
  // What a name means where it stands; null when it is not that. All look-ups of
  // variables by name go through here.
  VarSymbol* variableNamed(std::string_view name) const;
  NamedValue* valueNamed(const Expr& expr);
  // The value of leaf `index`, analysed; an error is appended when it is no constant.
  std::optional<std::int64_t> requireConstant(ASTNode& parent, int index);

  // expressions.cpp
  // Analyses leaf `index` of `parent`, an Expr, and returns what stands there then.
  Expr& analyseLeaf(ASTNode& parent, int index);
  Type* typeExpression(Expr& expr);
  Type* typeUnary(Expr& expr);
  Type* typeBinary(Expr& expr);
  void analyseChain(Expr& whole);
  // A direct address in the project's notation.
  bool isAddress(std::string_view text) const;
  bool becomesAddress(ASTNode& parent, int index);

  // calls.cpp
  Type* analyseCall(Call& call);
  Type* callOperator(Call& call);
  Type* callFunction(Call& call, UnitSymbol& function);
  void becomesAccess(Call& call);
  Type* callInstance(Call& call);
  bool leavesNameToOperator(const Call& call, int index) const;
  void declareEdgeState(const Call& call);
  Type* resultOf(Call& call, Type* named);
  Type* callReference(Call& call);
  void judgeOperands(const Call& call);
  void judgeChoice(const Call& call);
  void judgeConverted(const Call& call, const Expr& operand);
  void analyseOperandType(Call& call);
  // Appends an error when what is called gives no value.
  void requireValue(const Call& call, const Type* type);
  // Puts named arguments at the positions that `positionOf` gives their names. False, with an
  // error appended, when one fits no parameter.
  bool orderArguments(Call& call, const std::function<int(std::string_view)>& positionOf);
  void analyseArguments(Call& call, UnitSymbol& callee);
  void checkArgument(const Binding& binding, const UnitSymbol& callee);
  void requirePassable(const Binding& binding);

  // enabling.cpp
  static Argument** enablingPlace(Call& call, const ASTNode& node, const UnitSymbol* callee);
  // Takes EN and ENO out of the arguments of a call of `callee`, null for one without
  // declarations.
  void takeEnabling(Call& call, const UnitSymbol* callee);

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

  // compatibility.cpp
  bool judgeDerived(const Type& to, const Type& from, const ASTNode& source, vel::TextLocation at);
  void judgeRange(const Type& to, const ASTNode& source, vel::TextLocation at);
  void judgePointer(const Type& to, const Type& from, const ASTNode& source, vel::TextLocation at);

  // configurations.cpp
  void analyseConfigurations();
  void analyseTask(const ASTNode& task);
  void analyseInstance(const ASTNode& instance);

  // statements.cpp
  void analyseStatements(ASTNode* list);
  void analyseStatement(ASTNode& statement);
  void analyseAssignment(ASTNode& statement);
  void analyseIf(ASTNode& statement);
  void analyseCase(ASTNode& statement);
  // A label of a CASE with its values in the order of an unsigned scale.
  struct Label {
    std::uint64_t low;
    std::uint64_t high;
    const ASTNode* node;
  };
  void analyseLabels(ASTNode& labels, const Expr& selector, std::vector<Label>& found);
  std::optional<std::uint64_t> labelValue(ASTNode& parent, int index, const Expr& selector);
  void warnOfRepeated(std::vector<Label>& labels);
  void analyseFor(ASTNode& statement);
  void analyseCondition(ASTNode& parent, int index);

  template <typename... Args>
  void say(const ASTNode& where, const MessageFormat& format, const Args&... args) {
    report(messages_, where.pos(), format, {std::string_view(args)...});
  }
  // Said once of each name in a unit. The name must outlive the analysis.
  void sayUnknown(const ASTNode& where, const MessageFormat& format, std::string_view name);
  bool hasErrorFrom(std::size_t first) const;
  bool isInError(const Expr& expr) const;

  Services& services_;
  Tree& tree_;
  Prelude& prelude_;
  std::vector<vel::VELMessage>& messages_;
  struct MemberInitial {
    const Type* type = nullptr;
    VarDecl* declaration = nullptr;
    UnitSymbol* unit = nullptr;  // that the structure is declared in
  };
  FoldedMap<DeclaredType> declaredTypes_;
  FoldedMap<std::unique_ptr<VarSymbol>> constantsAhead_;  // until their declarations come
  std::vector<std::unique_ptr<VarSymbol>> withoutPlace_;
  std::vector<MemberInitial> memberInitials_;  // to be analysed when all members are known
  UnitSymbol* unit_ = nullptr;                 // being analysed; null for what belongs to no unit
  std::string unitName_;
  // The messages that the latest check of an operator has appended.
  struct {
    const Call* call = nullptr;
    std::size_t first = 0;
    std::size_t last = 0;
  } checked_;
  int nestedInputs_ = 0;     // of the standard functions around the expression being analysed
  int loops_ = 0;            // around the statement being analysed
  FoldedMap<bool> unknown_;  // names that have been said to be unknown in the unit
};

}  // namespace refhost
