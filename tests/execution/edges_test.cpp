#include <gtest/gtest.h>

#include "tests/execution/program.h"

namespace execution {
namespace {

// Bit n of a number is scan n. Units of all kinds keep the edge.
TEST(Edges, OverScans) {
  Program program;
  program.proves("MEP MEF");
  program.scans = 20;
  program.units =
      "FUNCTION Up : BOOL VAR_INPUT c : BOOL; END_VAR Up := MEP(c); END_FUNCTION\n"
      "FUNCTION Down : BOOL VAR_INPUT c : BOOL; END_VAR Down := mef(c); END_FUNCTION\n"
      "FUNCTION_BLOCK Both VAR_INPUT c : BOOL; n : UDINT; END_VAR VAR_OUTPUT up, down : UDINT;\n"
      "END_VAR up := up + SEL(MEP(c), UDINT#0, n); down := down + SEL(MEF(c), UDINT#0, n);\n"
      "END_FUNCTION_BLOCK\n";
  program.variables =
      "c, same, other : BOOL; inverse, direct : Both; n : UDINT := 1;\n"
      "up, down, fUp, fDown, dUp, dDown, iUp, iDown : UDINT;\n";
  const unsigned pattern = 0b1101000111010011;
  program.body = "c := " + program.input(value("UDINT", pattern)) +
                 " / n MOD 2 = 1;\n"
                 "up := up + SEL(MEP(c), UDINT#0, n); down := down + SEL(MEF(c), UDINT#0, n);\n"
                 // The same text has stored the condition already; another text has not.
                 "same := same OR MEP(c); other := other OR mep(c);\n"
                 "fUp := fUp + SEL(Up(c), UDINT#0, n); fDown := fDown + SEL(Down(c), UDINT#0, n);\n"
                 "direct(c := c, n := n); dUp := direct.up; dDown := direct.down;\n"
                 "inverse(c := NOT c, n := n); iUp := inverse.up; iDown := inverse.down;\n"
                 "n := n * 2;\n";
  const unsigned before = pattern << 1;
  const unsigned rises = pattern & ~before;
  const unsigned falls = before & ~pattern;
  // The condition is false before the first scan, and so is its inverse.
  const std::pair<const char*, unsigned> expected[] = {
      {"up", rises},    {"fUp", rises},   {"dUp", rises}, {"down", falls},
      {"fDown", falls}, {"dDown", falls}, {"iUp", falls}, {"iDown", rises & ~1U}};
  for (const auto& [name, bits] : expected) program.expectVariable(name, value("UDINT", bits));
  program.expectVariable("same", value("BOOL", 0));
  program.expectVariable("other", value("BOOL", 1));
  program.run();
}

}  // namespace
}  // namespace execution
