// The unit tests of a translation, for a front end that compiles and runs them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "refhost/diagnostic.h"
#include "refhost/value_shape.h"

namespace refhost {

struct TestCase {
  std::string title;
  SourceRange range;  // of the title
  // C functions `void f(void)`, which are called in this order. SETUP and TEARDOWN are those of the
  // file of the test; empty for none.
  std::string setup;
  std::string body;
  std::string teardown;
  std::string text;  // C that defines `body`
};

// The call of an assertion.
struct Assertion {
  struct Operand {
    SourceRange range;
    std::shared_ptr<const ValueShape> shape;  // null for a condition, which has no value to show
  };
  SourceRange range;
  std::string name;  // ASSERT_EQ and the like, in capitals
  std::vector<Operand> operands;
};

// The C calls functions that the front end declares in front of it:
//   u8 vel_test_differs(u32 assertion, const void* left, const void* right);
//     whether two values of the shape of the assertion's operands differ
//   _Noreturn void vel_test_fail(u32 assertion, const void* const* operands, const char* text);
//     `operands` points to the values of its operands, null for those without a shape; `text` is
//     that of the call, null for none
//   void vel_test_advance(i64 nanoseconds);
//   u8 vel_test_near(f64 left, f64 right, f64 tolerance);
//   u8 vel_test_near_whole(u8 less, u64 left, u64 right, i64 tolerance);
//     whether two values differ by no more than the tolerance; `less`: the left one is less
struct TestProgram {
  std::string fixtures;  // C of SETUP and TEARDOWN, behind that of the program
  std::vector<TestCase> tests;
  std::vector<Assertion> assertions;
  std::vector<SourceRange> parts;  // each SETUP, TEST and TEARDOWN
};

}  // namespace refhost
