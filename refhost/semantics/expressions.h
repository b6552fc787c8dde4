// Gives expressions their types.
#pragma once

#include <cstdint>
#include <optional>

#include "refhost/semantics/part.h"

namespace refhost {

class Expressions : public Part {
 public:
  using Part::Part;

  // Analyses leaf `index` of `parent`, an Expr, and returns what stands there then.
  Expr& analyseLeaf(ASTNode& parent, int index);
  void analyse(Expr& expr);
  // The value of leaf `index`, analysed; an error is appended when it is no constant.
  std::optional<std::int64_t> requireConstant(ASTNode& parent, int index);
  // Appends an error and returns false when the expression cannot be written.
  bool requireWritable(const Expr& target);

 private:
  // expressions.cpp
  bool becomesAddress(ASTNode& parent, int index);
  Type* typeExpression(Expr& expr);
  Type* typeCall(Expr& expr);
  Type* typeUnary(Expr& expr);
  Type* typeBinary(Expr& expr);
  void analyseChain(Expr& whole);
  void keepConstant(Expr& expr, const std::optional<TypedConstant>& value);

  // accesses.cpp
  Type* typeValue(Expr& expr, NamedValue& value);
  Type* typeVariable(Expr& expr);
  Type* typeAccess(Expr& expr);
  Type* typeMember(Expr& expr);
  Type* typeBit(Expr& expr);
  Type* typeElement(Expr& expr);
  Type* typeDereference(Expr& expr);
};

}  // namespace refhost
