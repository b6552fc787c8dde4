#include "support/plugin.h"

namespace {

using Move = PluginTest;

TEST_F(Move, Calls) {
  const CallRow rows[] = {
      {"MOVE(i + 1)", -2, true, "INT", "", "((i + 1'))", ""},
      {"MOVE(by)", -2, true, "USINT", "", "((by'))", ""},
      {"r := MOVE(lr)", -1, true, "LREAL",
       message(10, "W C0197",
               "~Implicit conversion from type 'LREAL' to type 'REAL' : Possible loss of "
               "information;"),
       "((lr'))", "REAL := LREAL LREAL in P"},
      {"i := move(s)", -2, false, "STRING",
       message(10, "E C0032", "~'STRING' cannot convert to 'INT' type;")},
      {"i := MOVE(u)", -2, false, "INVALID", "", "", ""},
      {"i := MOVE(q)", 0, true, "INVALID", "", "((q'))"},
      {"move()", 0, false, "old", countMessage(0, "move")},
      {"MOVE(a, b)", 0, false, "old", countMessage(0, "MOVE")},
      {"i := MOVE", 0, false, "old", countMessage(5, "MOVE")},
      {"move{a}", 0, false, "old",
       message(0, "E C0131", "~'a' are not allowed to be 'move' parameters;")},
  };
  for (const CallRow& row : rows) expectRow(row);
}

}  // namespace
