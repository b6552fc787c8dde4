// Unit tests: SETUP, TEST and TEARDOWN, and what only they can call.
#pragma once

#include <string>
#include <string_view>

#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/part.h"

namespace refhost {

class Tests : public Part {
 public:
  using Part::Part;

  // Declares the parts of the tests as units, behind those of the program.
  void declare();
  // Gives the units the form that tests call: a PROGRAM has instances only. To be called once
  // VAR_CONFIG has been analysed, and before the statements are.
  void enterInstances();
  // `SETUP`, `TEARDOWN`, or the name of the TEST.
  static std::string nameOf(const Unit& node);
  // True if the unit that is analysed is a part of a test.
  bool isInTest() const { return partOf(context_.unit) != TestPart::None; }
  // The type of the instances of the PROGRAM of this name, which only tests can declare; null for
  // none.
  Type* programType(std::string_view name);
  // True if a test can see the variable of an instance, which hides it from the program.
  bool sees(const VarSymbol& member) const;
  // Reports a call of MOCK_VERIFY and the like within a test; false for any other.
  bool refusesMock(const Call& call);
  // Analyses the call of a function of tests.
  void callFunction(Call& call);

 private:
  static TestPart partOf(const UnitSymbol* unit) {
    return unit != nullptr ? unit->node->testPart : TestPart::None;
  }
  void refuseParameters(const Unit& node);
  bool takesOperands(const Call& call);
  CommonType compare(Call& call, Expr& left, Expr& right);
  void analyseComparison(Call& call);
  void analyseCondition(Call& call);
  void analyseNear(Call& call);
  void analyseAdvance(Call& call);
  void analyseText(Call& call);
  bool isComparable(const Type& type) const;
};

}  // namespace refhost
