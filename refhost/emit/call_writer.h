// Calls of operators, of the standard's functions and of the program's.
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

  // The call, whatever its EN.
  std::string callText(const Call& call);
  // callText(), cast to the result's type where the C of an operator has another one; an
  // assignment to that type needs no cast.
  std::string typedText(const Call& call);
  // As an operand: typedText(), or zero where EN is FALSE.
  std::string operandText(const Call& call);
  // The statement that makes the string that `call` gives in `target` itself; empty where it
  // cannot.
  std::string textMadeIn(const Call& call, const Expr& target);

  // Operators record their own calls, the host those of the program's units.
  void record(const Call& call, const UnitSymbol& callee);
  // The statement that stores what an output gives, `value`.
  std::string storeOutput(const Binding& output, std::string value);
  // The statement that stores ENO, `flag`.
  std::string storeEnabled(const Call& call, const std::string& flag);
  // What the companion of an input is given for the argument `value`, null for none.
  std::string companionOf(const Expr* value);

 private:
  std::string operatorText(const Call& call);
  std::string functionText(const Call& call);
  std::string functionText(const Call& call, const std::vector<Binding>& bindings);
  // What a parameter of type `type` is given.
  std::string argumentText(const Expr& value, const vel::SymbolDataType* type);

  // standard_calls.cpp
  std::string standardText(const Call& call);
  // A string is made in `target` or, without one, in a buffer of the call's own.
  std::string runtimeText(const Call& call, const Expr* target);

  FileContext& file_;
  FunctionBody& body_;
  PlaceWriter& places_;
  ExpressionWriter& expressions_;
};

// The operands of a call; none where a type stands as the operand.
std::vector<const vel::ASTNode*> parametersOf(const Call& call);

// The argument for a parameter; null when the call leaves it out.
const Binding* bindingOf(const std::vector<Binding>& bindings, const VarSymbol* parameter);
const Expr* valueOf(const std::vector<Binding>& bindings, const VarSymbol* parameter);

}  // namespace refhost
