// Warnings of what is right by the language, but hardly meant.
#pragma once

#include <string_view>

#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/part.h"

namespace refhost {

class Doubts : public Part {
 public:
  using Part::Part;

  // doubts.cpp
  // Each takes what has been analysed without an error.
  void judgeBinary(const Expr& expr, const CommonType& common);
  // The right side is no call of its own.
  void judgeAssignment(const ASTNode& statement);
  // A label of a CASE, whose values are `values`.
  void judgeLabel(const ASTNode& label, const Expr& selector, const Bounds& values);
  void judgeLoop(const ASTNode& loop);
  // A value of type `from` is converted to `to`.
  void judgeConversion(const ASTNode& value, const Type& from, const Type& to);
  // The statements from `statement` on, which stand behind `jump`.
  void judgeUnreachable(const ASTNode& statement, const ASTNode& jump);

  // unused.cpp
  void judgeQualifiers(const UnitSymbol& unit, const VarBlock& block);
  void judgeInitial(const UnitSymbol& unit, const VarBlock& block, const VarDecl& declaration);
  void judgeConstant(const VarSymbol& variable, const VarBlock& block);
  // To be called for the target of an assignment, which does not count as a use of its variable.
  void noteWrite(const Expr& target);
  // True if the unit has variables whose values nothing can see but its statements.
  bool judgesReads(const UnitSymbol& unit) const;
  // Reports the variables that are not used. Says nothing if the program has errors.
  void judgeVariables();

  // surprises.cpp
  // A call of an operator whose result surprises most people.
  void judgeCall(const Call& call) {
    const OperatorFamily family = call.traits()->family;
    if (family == OperatorFamily::Conversion || family == OperatorFamily::GenericConversion ||
        family == OperatorFamily::Truncation) {
      judgeConverting(call);
    } else if (family == OperatorFamily::Selection || family == OperatorFamily::Shift) {
      judgeOperands(call);
    }
  }
  // A call of an edge detection that has the text of an earlier one in the unit.
  void judgeSharedState(const Call& call);

 private:
  // Says nothing if a mistake in the syntax may be the cause.
  template <typename... Args>
  void doubt(const ASTNode& where, const MessageFormat& format, const Args&... args) {
    if (!context_.broken) say(where, format, args...);
  }
  void judgeDivisor(const Expr& expr, const CommonType& common);
  void judgeComparison(const Expr& expr, const CommonType& common);
  void judgeVariable(const VarSymbol& variable, const UnitSymbol& unit);
  void surprise(const ASTNode& where, std::string_view what, std::string_view text);
  void judgeTimes(const Call& call, BasicDataType from, BasicDataType to);
  void judgeConverting(const Call& call);
  void judgeOperands(const Call& call);
  void judgeIndex(std::string_view name, const ASTNode& list);
  void judgeShift(std::string_view name, const ASTNode& list);
};

}  // namespace refhost
