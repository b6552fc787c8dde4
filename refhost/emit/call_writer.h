// Calls of operators, standard functions and the program's functions.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "refhost/emit/file_context.h"
#include "refhost/emit/function_body.h"
#include "refhost/semantics/bindings.h"

namespace refhost {

class ExpressionWriter;
class PlaceWriter;

class CallWriter {
 public:
  CallWriter(FileContext& file, FunctionBody& body, PlaceWriter& places,
             ExpressionWriter& expressions)
      : file_(file), body_(body), places_(places), expressions_(expressions) {}

  // The call without EN and ENO.
  std::string plainText(const Call& call);
  // The same, cast to the call's type where the operator's C text has another one. An assignment to
  // a variable of the call's type does not need the cast.
  std::string typedText(const Call& call);
  // As an operand: typedText(), or zero if EN is FALSE.
  std::string operandText(const Call& call);
  // The statement that writes the string result of `call` into `target` without a temporary; empty
  // if that is not possible.
  std::string inPlaceText(const Call& call, const Expr& target);

  // Adds the call to the call graph. Operators record their own calls.
  void record(const Call& call, const UnitSymbol& callee);
  // The statement that stores `value`, which the callee has returned for an output.
  std::string storeOutput(const Binding& output, std::string value);
  // The statement that stores ENO, `flag`.
  std::string storeEnabled(const Call& call, const std::string& flag);
  // The argument for the companion of a bit parameter whose own argument is `value`, null for none.
  std::string companionOf(const Expr* value);

 private:
  std::string operatorCallText(const Call& call);
  std::string functionCallText(const Call& call);
  std::string functionCallText(const Call& call, const std::vector<Binding>& bindings);
  // The argument `value` for a parameter of type `type`.
  std::string argumentText(const Expr& value, const vel::SymbolDataType* type);

  // standard_calls.cpp
  std::string standardCallText(const Call& call);
  std::string boundText(const Call& call);
  // A string is written into `target` or, if that is null, into a temporary.
  std::string runtimeCallText(const Call& call, const Expr* target);

  FileContext& file_;
  FunctionBody& body_;
  PlaceWriter& places_;
  ExpressionWriter& expressions_;
};

// The operands of a call; empty when the operand is a type.
std::vector<const vel::ASTNode*> parametersOf(const Call& call);

// The argument for a parameter; null when the call omits it.
const Binding* bindingOf(const std::vector<Binding>& bindings, const VarSymbol* parameter);
const Expr* valueOf(const std::vector<Binding>& bindings, const VarSymbol* parameter);

}  // namespace refhost
