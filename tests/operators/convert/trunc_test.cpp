#include "support/plugin.h"

namespace {

using Trunc = PluginTest;

TEST_F(Trunc, Calls) {
  const CallRow rows[] = {
      {"TRUNC(r)", 0, true, "DINT", "", "((i32)(r'))", "LREAL := REAL - in P"},
      {"trunc(lr)", -1, true, "DINT", loss(0, "LREAL", "LREAL"), "((i32)(lr'))"},
      {"TRUNC(by)", -3, true, "DINT", "", "((i32)(by'))", "LREAL := USINT - in P"},
      {"trunc(i)", -2, false, "old", mismatch("TRUNC", "i", "INT"), "((i32)(i'))"},
      {"trunc(b)", 0, false, "old", mismatch("TRUNC", "b", "BOOL"), "", ""},
      {"TRUNC(u)", 0, false, "old", mismatch("TRUNC", "u", "INVALID"), "", ""},
      {"trunc(r, r)", 0, false, "old", countMessage(0, "TRUNC")},
      {"trunc{r}", 0, false, "old", abnormal(0, "TRUNC")},
  };
  for (const CallRow& row : rows) expectRow(row);
}

}  // namespace
