// The places of lvalues.
#pragma once

#include <string>
#include <vector>

#include "refhost/emit/file_context.h"
#include "refhost/emit/function_body.h"
#include "refhost/emit/place.h"

namespace refhost {

class ExpressionWriter;

class PlaceWriter {
 public:
  PlaceWriter(FileContext& file, FunctionBody& body, ExpressionWriter& expressions)
      : file_(file), body_(body), expressions_(expressions) {}

  // The place of a variable, a member, an element, a bit or a device address. A named value is an
  // Object, too, which can only be read.
  Place of(const Expr& expr);
  Place of(const VarSymbol& variable);

  // True if another place can be meant after a function with side effects has been called: one with
  // a subscript that is no constant, or one that a pointer or a reference points to.
  static bool canMove(const Expr& expr);
  // Evaluates a place whose address is needed before side effects could change it: the definition
  // of a pointer to it, with its semicolon, by which of() reaches the place from then on. Empty for
  // a place that has no address and so cannot move.
  std::string hold(const Expr& expr);
  bool isHeld(const Expr& expr) const;
  // Ends the use of that pointer.
  void release(const Expr& expr);
  // The pointers and subscripts of a place, in the order in which they are evaluated.
  static std::vector<const vel::ASTNode*> partsOf(const Expr& expr);

  // A pointer to the lvalue `value` of type `type`; for a string, to its first character.
  std::string pointerTo(const Expr& value, const vel::SymbolDataType* type);
  // The argument for a parameter that is indirect.
  std::string passed(const Expr& value, const VarSymbol& parameter);
  // The index from 0 of a subscript of a dimension with these bounds in C.
  std::string subscriptText(const vel::ASTNode& subscript, const std::string& low,
                            const std::string& high);
  // A pointer for a reference to `type` that is to be bound to `target`, which may be NULL or 0.
  std::string boundText(const Expr& target, const vel::SymbolDataType* type);
  // The statement, without its semicolon, that binds the reference to `type` whose place is given.
  std::string bind(const Place& reference, const vel::SymbolDataType* type, const Expr& target);
  // The statement, without its semicolon, that assigns `value` of type `from` to `target`.
  std::string store(const Expr& target, const std::string& value, BasicDataType from);

 private:
  Place named(const Expr& expr);
  bool isShared(const VarSymbol& variable) const;
  Place element(const Expr& expr);
  std::string indexText(const Expr& expr, const ArrayType& array);
  // `whole` is the array in C.
  std::string indexText(const Expr& expr, const OpenArrayType& array, const std::string& whole);

  FileContext& file_;
  FunctionBody& body_;
  ExpressionWriter& expressions_;
};

}  // namespace refhost
