// Emission of C: one file from the analysed units. It is the generator that the
// operators are handed.
#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "host/generator.h"
#include "host/message.h"
#include "refhost/emit/effects.h"
#include "refhost/emit/names.h"
#include "refhost/emit/place.h"
#include "refhost/emit/start_values.h"
#include "refhost/emit/type_text.h"
#include "refhost/messages.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/bindings.h"
#include "refhost/services/services.h"

namespace refhost {

class CGenerator final : public vel::Generator {
 public:
  // `services` know an analysed program.
  CGenerator(Services& services, std::vector<vel::VELMessage>& messages);

  // The whole file. Appends an error for each call for which its operator generates
  // nothing.
  std::string program();

  // C names of a PROGRAM's functions, once program() has run.
  static std::string initName(const UnitSymbol& unit);
  static std::string scanName(const UnitSymbol& unit);
  // A variable of a PROGRAM as code behind the generated file sees it.
  static Place globalPlace(const VarSymbol& variable);

  const char* optionText(const char* name) override;
  std::string typeText(vel::SymbolDataType* type) override { return refhost::typeText(type); }
  std::string variableText(vel::SymbolVar* variable, int flag, const std::string& pouName) override;
  std::string expressionText(vel::ASTNode* expression) override;
  // Literals need no preparation in this host's C.
  std::string prepareConstant(const std::string& text, vel::BasicDataType) override { return text; }

 private:
  using Type = vel::SymbolDataType;

  // units.cpp
  std::string unoperated(const std::string& name) const;
  void nameUnits();
  void nameVariables(UnitSymbol& unit);
  void appendStructure(const UnitSymbol& unit, std::string& out) const;
  std::string prototypes();
  std::string functionHead(const UnitSymbol& function);
  void appendFunction(UnitSymbol& function, std::string& out);
  void appendStateful(UnitSymbol& unit, std::string& out);
  void appendInit(UnitSymbol& unit, std::string& out);
  // Shows the body the edge of an input in place of its value.
  void detectEdge(const VarSymbol& input);
  void appendLocals(const UnitSymbol& unit, std::string& out);
  // Of the variables kept between scans, or of the temporary ones.
  void appendInitials(const UnitSymbol& unit, bool members);
  // Starts the text of a C function for `unit`; body_ collects it.
  void enter(UnitSymbol& unit);
  // The collected text, with the temporaries it needs in front.
  std::string leave(bool hasSelf);
  std::string companionsText();
  static std::string companion(const VarSymbol& parameter);

  // globals.cpp
  void nameGlobals();
  void appendGlobals(std::string& out);
  void initialiseOnce(const VarSymbol& variable);
  // The constants that the initial value of a variable is computed from come first.
  void initialiseConstants(const vel::ASTNode& value, const VarSymbol& of);

  // data_types.cpp
  void nameTypes();
  std::string structures();
  void appendStructure(const StructType& structure, std::string& out) const;

  // initials.cpp
  // Statements that give a variable at `place` its initial value.
  void initialise(const Place& place, const VarSymbol& variable);
  // The initial value of an array or structure that a call leaves out, as an expression.
  std::string initialText(const VarSymbol& input);
  void setDefault(const Place& place, const Type* type);
  void setInitial(const Place& place, const Type* type, const Expr& value);
  void setElements(const Place& place, const ArrayType& array, const Expr& list, int first,
                   std::int64_t& next);
  void setRepeated(const Place& place, const ArrayType& array, const Expr& repeat,
                   std::int64_t& next);
  template <typename Set>
  void forElements(const Place& place, const std::string& from, const std::string& end, Set set);
  std::string structureInits();

  // statements.cpp
  void statements(const ASTNode* list);
  void statement(const ASTNode& node);
  void assignment(const ASTNode& node);
  void ifStatement(const ASTNode& node);
  void caseStatement(const ASTNode& node);
  std::string labelCondition(const ASTNode& labels, const std::string& selector, bool wide);
  void forStatement(const ASTNode& node);
  // Writes the loop and returns true when it is one between constants.
  bool countingLoop(const ASTNode& node);
  void line(const std::string& text);
  void block(const std::string& head, const ASTNode* list);
  // The statement that gives `target` the value `value` of type `from`.
  std::string store(const Expr& target, const std::string& value, BasicDataType from);

  // expressions.cpp
  void append(const Expr& expr, std::string& out);
  // Like append(), in parentheses where an operator next to it needs them.
  void operand(const ASTNode& node, std::string& out);
  // An operand taken to `type`.
  void converted(const ASTNode& node, BasicDataType type, std::string& out);
  void unary(const Expr& expr, std::string& out);
  void binary(const Expr& expr, std::string& out);
  void binaryPiece(const Expr& expr, std::string& out);
  void operation(const Expr& expr, std::string& out);
  void numbers(const Expr& expr, BasicDataType type, std::string& out);
  void times(const Expr& expr, const Meeting& meeting, std::string& out);
  Place placeOf(const Expr& expr);
  Place placeOf(const VarSymbol& variable);
  Place namedPlace(const Expr& expr);
  Place elementPlace(const Expr& expr);
  std::string indexText(const Expr& expr, const ArrayType& array);
  void pointers(const Expr& expr, const Meeting& meeting, std::string& out);

  // calls.cpp
  void callStatement(const Call& call);
  void instanceCall(const Call& call);
  std::string callText(const Call& call);
  // Operators record their own calls, the host those of the program's units.
  void recordCall(const Call& call, const UnitSymbol& callee);
  std::string operatorText(const Call& call);
  // callText(), cast to the result's type where the C of an operator has another one; an
  // assignment to that type needs no cast.
  std::string typedText(const Call& call);
  std::string functionText(const Call& call);
  std::string functionText(const Call& call, const std::vector<Binding>& bindings);
  // The statement that stores what an output gives, `value`.
  std::string storeOutput(const Binding& output, std::string value);
  // What the companion of an input is given for the argument `value`.
  std::string companionOf(const Expr* value);
  std::string pointerTo(const Expr& value, const Type* type);
  // What a parameter of type `type` is given.
  std::string argumentText(const Expr& value, const Type* type);
  Place calledInstance(const Call& call);
  std::string temporary(const Type* type);

  // enabling.cpp
  // Writes the statement that `write` does, made only where EN of `call` is TRUE, and one that
  // stores ENO.
  void whenEnabled(const Call& call, const std::function<void()>& write);
  // In an expression: `value`, the call's text, or zero.
  std::string enabledText(const Call& call, const std::string& value);
  std::string storeEnabled(const Call& call, const std::string& flag);

  // standard_calls.cpp
  std::string standardText(const Call& call);
  // Writes the statement that makes the text of `call` in `target` itself, where it can.
  bool makeInPlace(const Call& call, const Expr& target);
  std::string runtimeText(const Call& call, const Expr* target);

  // evaluation_order.cpp
  // Of a call; none where a type stands as the operand.
  static std::vector<const vel::ASTNode*> parametersOf(const Call& call);
  // What `write` makes of the operands, in C that evaluates them from left to right, each
  // once; `repeated` where the text may evaluate one again.
  std::string inOrder(const std::vector<const vel::ASTNode*>& operands, bool repeated,
                      const std::function<std::string()>& write);

  Services& services_;
  std::vector<vel::VELMessage>& messages_;

  CNames fileNames_{CNames::Scope::File};
  std::vector<std::string> staticTexts_;  // in order of first use
  std::unordered_set<const vel::STOperator*> usedOperators_;
  StartValues startValues_;
  Effects effects_;

  // Of the C function being written.
  UnitSymbol* unit_ = nullptr;
  std::string body_;
  int indent_ = 1;
  int temporaries_ = 0;
  std::string declarations_;                                   // of the temporaries
  std::unordered_map<const vel::ASTNode*, std::string> held_;  // operands in temporaries
  std::string closing_;  // what is done last, also after a RETURN
  bool usesSelf_ = false;
  bool returns_ = false;  // by a RETURN before the end
  std::unordered_set<const VarSymbol*> used_;
  std::unordered_set<const vel::Symbol*> companions_;  // parameters whose bits are asked for
  std::unordered_set<const VarSymbol*> initialised_;
};

}  // namespace refhost
