#include "tests/refhost/translation.h"

namespace refhost {
namespace {

// The label that the C of `CASE selector OF expression:` compares with.
std::string labelOf(const std::string& expression) {
  const std::string variables =
      "d: LINT; k: LWORD; e: (One := 1, Large := 40000); END_VAR VAR CONSTANT a: INT := 20000; "
      "s: SINT := -56; u: USINT := 200; w: DWORD := 16#F0F0; later: INT := earlier + 1; "
      "earlier: INT := One; lo: LINT := -9223372036854775808; hi: ULINT := 18446744073709551615;";
  const auto session =
      analysed(program(variables, "CASE d OF " + expression + ": k := 1; END_CASE;"));
  const std::string text = session->translate();
  const std::size_t label = text.find(" == ");
  if (label == std::string::npos) return fmt::format("{}", fmt::join(said(*session), "\n"));
  return text.substr(label + 4, text.find(')', label) - label - 4);
}

TEST(Constants, AreComputedAsTheProgramWould) {
  const std::vector<std::pair<const char*, const char*>> rows = {
      {"100 + 100", "200"},  // no type is named: a number
      {"a + a", "-25536"},
      {"a + 20000", "-25536"},
      {"a * 2 / 2", "-12768"},
      {"INT#20000 + 40000", "60000"},
      {"s", "-56"},
      {"-s", "56"},
      {"u + u", "144"},
      {"-u", "-200"},
      {"Large * 2", "80000"},
      {"later", "2"},
      {"NOT 5", "-6"},
      {"w AND 16#FF00 XOR 1", "61441"},
      {"lo / -1", "(-9223372036854775807LL - 1"},
      {"lo MOD -1", "0"},
      {"-7 / 2", "-3"},
      {"-7 MOD 2", "-1"},
      {"hi + 2", "1"},
      {"a / (One - 1)", "2:11 error F002F 'a / (One - 1)' is not a constant integer;"},
  };
  for (const auto& [expression, value] : rows) EXPECT_EQ(value, labelOf(expression)) << expression;
}

// Also where the declarations stand in the wrong order, and where each needs the one before it
// twice.
TEST(Constants, AreComputedOnceWithoutRecursion) {
  std::string backwards = "x: ARRAY[0..C0] OF T0;";
  std::string twice = "D0: LINT := 1; ";
  std::string types = "TYPE T20000: INT; ";
  for (int i = 0; i < 20000; ++i) {
    backwards += i == 0 ? " END_VAR VAR CONSTANT " : "";
    backwards += fmt::format("C{}: INT := C{}; ", i, i + 1);
    twice += i < 60 ? fmt::format("D{0}: LINT := D{1} + D{1}; ", i + 1, i) : "";
    types += fmt::format("T{}: T{}; ", i, i + 1);
  }
  const auto session = analysed(
      types + "END_TYPE\n" + program(backwards + "C20000: INT := 3; " + twice, "x[C0 + 1] := 1;"));
  EXPECT_EQ("3:3 error F0079 The subscript 'C0 + 1' is outside of 0..3;",
            fmt::format("{}", fmt::join(said(*session), "\n")));
}

// Sizes and addresses depend on no value, and a call is not the variable of its name.
TEST(Constants, NeedOnlyWhatTheyRead) {
  const auto session = analysed(
      "VAR_GLOBAL CONSTANT MAX: INT := MAX(1, 2); s: UDINT := SIZEOF(s); p: UDINT := ADR(p); n: "
      "INT "
      ":= 2; END_VAR\n" +
      program(
          "x: ARRAY[0..3] OF UDINT := [n(SIZEOF(x)), n(1)]; y: ARRAY[0..1] OF INT := [(n - 5)];",
          ""));
  EXPECT_EQ("", fmt::format("{}", fmt::join(said(*session), "\n")));
}

TEST(Constants, NameTheCircleInWhichTheyDependOnEachOther) {
  const auto session = analysed(
      "VAR_GLOBAL CONSTANT\na: INT := b + 1; b: INT := 2 * c;\nc: INT := a; d: INT := d; e: INT := "
      "a;\n"
      "END_VAR\n" +
      program("x: ARRAY[0..e] OF INT;", "x[d] := b;"));
  EXPECT_EQ(
      "2:11 error F003F The value of the constant 'a' depends on itself: a, b, c, a;\n"
      "3:24 error F003F The value of the constant 'd' depends on itself: d, d;",
      fmt::format("{}", fmt::join(said(*session), "\n")));
}

}  // namespace
}  // namespace refhost
