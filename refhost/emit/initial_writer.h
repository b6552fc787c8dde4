// Initial values. All variables are zero before their initial values are set.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>

#include "refhost/emit/expression_writer.h"
#include "refhost/services/array_values.h"

namespace refhost {

class InitialWriter {
 public:
  InitialWriter(FileContext& file, FunctionBody& body, ExpressionWriter& expressions)
      : file_(file), body_(body), expressions_(expressions) {}

  // Writes the statements that initialise a variable at `place`.
  void initialise(const Place& place, const VarSymbol& variable);
  // The same for the variables of `unit` that are kept between scans, or for its VAR_TEMP ones.
  // Constants are initialised before the variables whose initial values name them.
  void initialiseAll(const UnitSymbol& unit, bool kept);
  // The places in the table `vel_places`, of which each variable AT %Q* of a unit gets its own.
  void setPlaces(const UnitSymbol& unit);
  // Enters where the places of a variable, or of a member of `structure`, begin.
  void enter(const VarSymbol& variable, const vel::SymbolDataType* structure);
  // Sets the initial values that VAR_CONFIG gives to variables of `unit`, the structure of a unit.
  void setConfigured(const ConfiguredVariables::Root& root, const Place& unit);
  // The initial value of an array or structure parameter as an expression, for a call that omits
  // the argument.
  std::string text(const VarSymbol& input);

 private:
  using Type = vel::SymbolDataType;

  void once(const VarSymbol& variable);
  void constantsIn(const vel::ASTNode& value, const VarSymbol& of);
  void setDefault(const Place& place, const Type* type);
  void callInit(const std::string& init, const Place& place, const Type* type);
  void setInitial(const Place& place, const Type* type, const Expr& value);
  // Assigns the items of `list` from leaf `first` on to the elements from `next` on, which becomes
  // the element after them.
  void setItems(const Place& place, const ArrayValues& values, const Expr& list, int first,
                std::int64_t& next);
  void setRepeated(const Place& place, const ArrayValues& values, const Expr& repeat,
                   std::int64_t& next);
  // Writes a loop from `from` to before `end`, which are C expressions.
  // `set` takes the place and the index of an element.
  template <typename Set>
  void forElements(const Place& place, const std::string& from, const std::string& end, Set set);

  FileContext& file_;
  FunctionBody& body_;
  ExpressionWriter& expressions_;
  std::unordered_set<const VarSymbol*> initialised_;
  std::string places_;  // C expression: the places of what is being initialised
};

}  // namespace refhost
