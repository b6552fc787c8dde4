// Conversions between all types that are no texts.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/execution/program.h"

namespace execution {
namespace {

// A real becomes an integer by adding a half, of its own sign, as an LREAL, and dropping the
// fraction; so the neighbour of 0.5 becomes 1, and odd numbers above 2 to the power of 52 the
// next even one.
Value half(const Value& source) {
  const auto x = static_cast<double>(source.number);
  return {source.type, static_cast<Number>(x >= 0 ? x + 0.5 : x - 0.5), {}};
}

// X_TO_Y. A unit of TIME, DATE and the like is a number like any other.
std::optional<Value> typed(const Type& target, const Value& source) {
  const bool rounds =
      source.type->kind == Type::Real && target.kind != Type::Real && target.kind != Type::Bool;
  return converted(target, rounds ? half(source) : source);
}

// TO_Y, which rounds for integers and bit strings only.
std::optional<Value> generic(const Type& target, const Value& source) {
  return target.clock ? converted(target, source) : typed(target, source);
}

class Conversions : public testing::TestWithParam<Type> {};

TEST_P(Conversions, FromEverySample) {
  const Type& source = GetParam();
  Program program;
  for (const Type& target : types()) {
    if (target.kind == Type::Text) continue;
    const std::vector<Value> all = samples(source);
    for (std::size_t i = 0; i < all.size(); ++i) {
      const std::string name = "TO_" + target.name;
      const auto expected = typed(target, all[i]);
      if (expected && source.name != target.name)
        program.expect(source.name + '_' + name, {all[i]}, *expected);
      // The generic names become the same C, mostly.
      const auto ofGeneric = generic(target, all[i]);
      if (ofGeneric && i % 4 == 0) program.expect(name, {all[i]}, *ofGeneric);
    }
  }
  program.run();
}

INSTANTIATE_TEST_SUITE_P(All, Conversions, testing::ValuesIn(types().begin(), types().end() - 2),
                         [](const auto& test) { return test.param.name; });

// TRUNC drops the fraction and takes the low 32 bits of an integer.
TEST(Conversion, Trunc) {
  Program program;
  for (const Type& source : types()) {
    if (!source.isNumber()) continue;
    for (const Value& sample : samples(source)) {
      const auto expected = converted(typeOf("DINT"), sample);
      if (expected) program.expect("TRUNC", {sample}, *expected);
    }
  }
  program.run();
}

}  // namespace
}  // namespace execution
