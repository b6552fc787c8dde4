// Numeric functions, BCD, MOVE and sizes.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>

#include "tests/execution/program.h"

namespace execution {
namespace {

struct Function {
  const char* name;
  Number (*compute)(Number);
};
const Function kFunctions[] = {
    {"SQRT", std::sqrt}, {"LN", std::log},    {"LOG", std::log10}, {"EXP", std::exp},
    {"SIN", std::sin},   {"COS", std::cos},   {"TAN", std::tan},   {"ASIN", std::asin},
    {"ACOS", std::acos}, {"ATAN", std::atan},
};

// What a function sees and gives: an LREAL; a REAL when its input is one.
Number asLReal(Number x) { return static_cast<double>(x); }
Value result(const Type& input, Number x) {
  return value(input.name == "REAL" ? "REAL" : "LREAL", asLReal(x));
}
// Two neighbours, for the library's rounding is not specified.
Number nearby(const Type& input) { return std::ldexp(Number{1}, input.name == "REAL" ? -22 : -51); }

TEST(Numeric, RealFunctions) {
  Program program;
  for (const Type& type : types()) {
    if (!type.isNumber()) continue;
    for (const Value& sample : type.kind == Type::Real ? samples(type) : few(type)) {
      for (const Function& function : kFunctions) {
        program.expect(function.name, {sample},
                       result(type, function.compute(asLReal(sample.number))), nearby(type));
      }
    }
  }
  program.run();
}

TEST(Numeric, Powers) {
  Program program;
  for (const char* const exponentType : {"INT", "LREAL"}) {
    for (const Type& type : types()) {
      if (!type.isNumber()) continue;
      for (const Number base : {0.0L, 1.0L, -1.0L, 2.0L, -3.0L, 0.5L, 100.0L}) {
        const auto left = converted(type, value("LREAL", base));
        for (const Number exponent : {0.0L, 1.0L, 2.0L, -1.0L, 0.5L, 3.0L, 1000.0L}) {
          const auto right = converted(typeOf(exponentType), value("LREAL", exponent));
          if (!left || !right) continue;
          program.expect("EXPT", {*left, *right},
                         result(type, std::pow(left->number, right->number)), nearby(type));
        }
      }
    }
  }
  program.run();
}

// The lowest value of a signed type has no partner and stays.
TEST(Numeric, KeepTheType) {
  Program program;
  for (const Type& type : types()) {
    for (const Value& sample : samples(type)) {
      if (type.kind != Type::Text) program.expect("MOVE", {sample}, sample);
      if (type.isNumber()) {
        const Value magnitude{sample.type, std::fabs(sample.number), {}};
        program.expect("ABS", {sample}, *converted(type, magnitude));
      }
    }
  }
  program.run();
}

TEST(Numeric, Bcd) {
  Program program;
  const auto digit = [](int half) { return half <= 9 ? half : 0; };
  for (int code = 0; code < 256; ++code) {
    for (const char* const type : {"BYTE", "USINT"}) {
      program.expect("BCD_TO_INT", {value(type, code)},
                     value("INT", digit(code / 16) * 10 + digit(code % 16)));
    }
  }
  for (const char* const type : {"SINT", "INT", "USINT", "UINT", "BYTE", "WORD"}) {
    for (Value sample : samples(typeOf(type))) {
      const Number n = std::min(std::max(sample.number, Number{0}), Number{99});
      program.expect("INT_TO_BCD", {sample},
                     value("BYTE", std::floor(n / 10) * 16 + std::fmod(n, 10)));
    }
  }
  for (int n = 0; n <= 99; ++n) {
    program.expect(fmt::format("INT_TO_BCD({})", n), value("BYTE", n / 10 * 16 + n % 10));
  }
  program.run();
}

TEST(Numeric, SizesAndAddresses) {
  Program program;
  program.variables = "s : STRING[10]; w : WSTRING[10]; m1 AT %MW3 : WORD; m2 AT %MD5 : DWORD;\n";
  for (const Type& type : types()) {
    if (type.kind == Type::Text) continue;
    for (const std::string& operand : {type.name, program.input(value(type.name, 1))}) {
      program.expect("SIZEOF(" + operand + ')', value("UDINT", type.bits / 8));
    }
  }
  const std::pair<const char*, int> rows[] = {
      {"s", 11},   {"w", 22},     {"%MX7.3", 1}, {"%IB1", 1},      {"%QW1", 2}, {"%MD1", 4},
      {"%ML1", 8}, {"LINT#5", 8}, {"BYTE#5", 1}, {"LREAL#1.0", 8}, {"T#5s", 4}, {"5", 4}};
  for (const auto& [operand, size] : rows) {
    program.expect(fmt::format("SIZEOF({})", operand), value("UDINT", size));
  }
  // Only differences of addresses are the same on every machine.
  program.expect("ADR(m2) - ADR(m1)", value("UDINT", 14));
  program.expect("ADR(%MB9) - ADR(%MB2)", value("UDINT", 7));
  program.run();
}

}  // namespace
}  // namespace execution
