// The functions that the parts of unit tests can call: assertions, and the clock.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "refhost/syntax/expression_kinds.h"

namespace refhost {

class Spelling;

struct TestFunction {
  enum class Kind : std::uint8_t {
    Comparison,  // asserts `comparison` of two operands
    Condition,   // asserts that its operand is `expected`
    Near,        // asserts that two numbers or times differ by no more than the third operand
    Advance,     // lets time pass
  };

  std::string_view name;
  Kind kind;
  ExprKind comparison;  // in a Near one of its operands
  bool expected;

  // The number of operands, to which an assertion may add a text.
  int operands() const { return kind == Kind::Near ? 3 : kind == Kind::Comparison ? 2 : 1; }
  bool asserts() const { return kind != Kind::Advance; }
};

// Null when there is no such function. The lookup ignores letter case.
const TestFunction* testFunction(std::string_view name);
void forEachTestFunction(const std::function<void(const TestFunction&)>& visit);
void offerTestFunctions(Spelling& spelling);
// True of the name of a function by which units are replaced or watched, which is not supported.
bool isMockFunction(std::string_view name);

}  // namespace refhost
