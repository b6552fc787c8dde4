#include "support/plugin.h"

namespace {

using Move = PluginTest;

TEST_F(Move, Calls) {
  const CallRow rows[] = {
      {"MOVE(i + 1)", -2, true, "INT", "", "((i + 1'))", ""},
      {"MOVE(by)", -2, true, "USINT", "", "((by'))", ""},
      {"r := MOVE(lr)", -1, true, "LREAL", loss(10, "LREAL", "REAL"), "((lr'))",
       "REAL := LREAL LREAL in P"},
      {"i := move(s)", -2, false, "STRING", cannotConvert(10, "STRING", "INT")},
      {"i := MOVE(u)", -2, false, "INVALID", "", "", ""},
      {" := MOVE(i)", 0, true, "INT", "", "((i'))", "INVALID := INT INT in P"},
      {"i := MOVE(q)", 0, true, "INVALID", "", "((q'))"},
      {"move()", 0, false, "old", countMessage(0, "move")},
      {"MOVE(a, b)", 0, false, "old", countMessage(0, "MOVE")},
      {"i := MOVE", 0, false, "old", countMessage(5, "MOVE")},
      {"move{a}", 0, false, "old", notAllowed(0, "a", "move")},
  };
  for (const CallRow& row : rows) expectRow(row);
}

}  // namespace
