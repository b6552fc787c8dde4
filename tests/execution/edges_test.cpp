#include <gtest/gtest.h>

#include "tests/execution/program.h"

namespace execution {
namespace {

// Each bit of a history is one scan, the last one lowest. Units of all kinds keep the edge.
TEST(Edges, OverScans) {
  const unsigned pattern = 0b1101000111010011;
  Program program;
  program.proves("MEP MEF");
  program.scans = 20;
  program.units =
      "FUNCTION Up : BOOL VAR_INPUT c : BOOL; END_VAR Up := MEP(c); END_FUNCTION\n"
      "FUNCTION Down : BOOL VAR_INPUT c : BOOL; END_VAR Down := mef(c); END_FUNCTION\n"
      "FUNCTION_BLOCK Both VAR_INPUT c : BOOL; END_VAR VAR_OUTPUT up, down : UDINT; END_VAR\n"
      "up := up * 2 + TO_UDINT(MEP(c)); down := down * 2 + TO_UDINT(MEF(c));\n"
      "END_FUNCTION_BLOCK\n";
  program.variables =
      "c, same, other : BOOL; inverse, direct : Both;\n"
      "up, down, fUp, fDown, dUp, dDown, iUp, iDown : UDINT;\n";
  const std::string rest = program.input(value("UDINT", pattern));
  program.body = "c := " + rest + " MOD 2 = 1; " + rest + " := " + rest +
                 " / 2;\n"
                 "up := up * 2 + TO_UDINT(MEP(c)); down := down * 2 + TO_UDINT(MEF(c));\n"
                 // The same text has stored the condition already; another text has not.
                 "same := same OR MEP(c); other := other OR mep(c);\n"
                 "fUp := fUp * 2 + TO_UDINT(Up(c)); fDown := fDown * 2 + TO_UDINT(Down(c));\n"
                 "direct(c := c); dUp := direct.up; dDown := direct.down;\n"
                 "inverse(c := NOT c); iUp := inverse.up; iDown := inverse.down;\n";
  unsigned up = 0;
  unsigned down = 0;
  for (int scan = 0; scan < program.scans; ++scan) {
    const bool now = (pattern >> scan) % 2 != 0;
    const bool before = scan > 0 && (pattern >> (scan - 1)) % 2 != 0;
    up = up * 2 + (now && !before ? 1 : 0);
    down = down * 2 + (!now && before ? 1 : 0);
  }
  for (const char* const name : {"up", "fUp", "dUp"})
    program.expectVariable(name, value("UDINT", up));
  for (const char* const name : {"down", "fDown", "dDown"}) {
    program.expectVariable(name, value("UDINT", down));
  }
  program.expectVariable("same", value("BOOL", 0));
  program.expectVariable("other", value("BOOL", 1));
  // The condition is false before the first scan.
  const bool first = pattern % 2 == 0;
  program.expectVariable("iUp", value("UDINT", down + (first ? 1U << (program.scans - 1) : 0)));
  program.expectVariable("iDown", value("UDINT", first ? up : up - (1U << (program.scans - 1))));
  program.run();
}

}  // namespace
}  // namespace execution
