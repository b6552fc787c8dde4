// Typing of expressions.
#pragma once

#include <optional>

#include "refhost/semantics/part.h"

namespace refhost {

class Expressions : public Part {
 public:
  using Part::Part;

  // Analyses leaf `index` of `parent`, an Expr. Returns the leaf, which the analysis may replace.
  // `wanted` is the type that the context expects, null for none: a value of this enumeration goes
  // before those of others, an untyped 0 or 1 is a BOOL where that is expected, and untyped real
  // numbers are LREALs where one is.
  Expr& analyseLeaf(ASTNode& parent, int index, const Type* wanted = nullptr);
  // The same for an operand that may also be an ARRAY[*].
  Expr& analyseArray(ASTNode& parent, int index, const Type* wanted = nullptr);
  void analyse(Expr& expr, const Type* wanted = nullptr);
  // The same for the target of an assignment.
  Expr& analyseTarget(ASTNode& parent, int index);
  // Analyses leaf `index` and returns its value; reports an error when it is not constant.
  std::optional<Integer> requireConstant(ASTNode& parent, int index);
  // True of a place in memory that a pointer or an in-out parameter can refer to: no part of a
  // value, and no bit of device memory.
  bool hasAddress(const Expr& value) const;
  // Reports an error and returns false when the expression cannot be assigned to. True also for
  // one without a type, which has been reported.
  bool requireWritable(const Expr& target);

  // The leaf, null for none, as the node that will be analysed: a bit in device letters looks like
  // a part of a variable.
  Expr* settled(ASTNode& parent, int index);

 private:
  // expressions.cpp
  bool becomesAddress(ASTNode& parent, int index);
  Type* typeAs(Expr& expr, const Type& wanted);
  Type* typeExpression(Expr& expr, const Type* wanted);
  Type* typeCall(Expr& expr, const Type* wanted);
  Type* typeUnary(Expr& expr, const Type* wanted);
  Type* typeBinary(Expr& expr, const Type* wanted);
  void analyseChain(Expr& whole, const Type* wanted);
  void keepConstant(Expr& expr, const std::optional<TypedConstant>& value);

  // accesses.cpp
  bool refusesValue(const ASTNode& where, std::string_view type, std::string_view name);
  Type* typeValue(Expr& expr, NamedValue& value);
  Type* typeVariable(Expr& expr, const Type* wanted);
  Type* typeAccess(Expr& expr);
  Expr& analyseWhole(Expr& member);
  Type* typeMember(Expr& expr);
  Type* typeElement(Expr& expr);
  Type* typeDereference(Expr& expr);
  Type* typePart(Expr& expr);
};

}  // namespace refhost
