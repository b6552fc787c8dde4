// Programs far larger than those of the other tests.
#include <algorithm>
#include <ctime>

#include "tests/refhost/one_case_in.h"
#include "tests/refhost/translation.h"

namespace refhost {
namespace {

std::string repeated(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

// With sanitizers, frames are larger and everything takes longer.
constexpr int kTerms = kOneCaseIn > 1 ? 20'000 : 100'000;
constexpr int kTypes = kOneCaseIn > 1 ? 1'000 : 4'000;

TEST(LargePrograms, LongSumsTakeNoStack) {
  for (const char* const operand : {" + i", " OR i"}) {
    const auto session = analysed(program("i: WORD;", "i := i" + repeated(kTerms, operand) + ";"));
    EXPECT_EQ("", brief(*session));
    EXPECT_LT(10U * kTerms, session->translate().size());
  }
}

// Processor time for `count` types of arrays, the least of two.
std::clock_t timeOfTypes(int count) {
  std::string variables;
  for (int i = 1; i <= count; ++i) variables += fmt::format("a{0}: ARRAY[1..{0}] OF BYTE; ", i);
  std::clock_t least = 0;
  for (int run = 0; run < 2; ++run) {
    const std::clock_t start = std::clock();
    EXPECT_EQ("", brief(*analysed(program(variables, ""))));
    const std::clock_t taken = std::clock() - start;
    least = run == 0 ? taken : std::min(least, taken);
  }
  return least;
}

// Four times as many types take some four times as long; a search through those known took
// twenty-seven times as long.
TEST(LargePrograms, TypesAreFoundAtOnce) {
  EXPECT_LT(timeOfTypes(4 * kTypes), 10 * timeOfTypes(kTypes));
}

}  // namespace
}  // namespace refhost
