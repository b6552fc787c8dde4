#include "support/plugin.h"

namespace {

using Selection = PluginTest;

TEST_F(Selection, Sel) {
  expectRows({
      {"SEL(b, by, s)", -2, true, "BYTE", "", "SEL((b'), (by'), (s'))", ""},
      {"sel(TRUE, 5, r)", -2, true, "SINT", "", "SEL((TRUE'), (5'), (r'))", ""},
      {"SEL(b + b, i + 1, i)", 0, true, "old", "", "SEL((b + b'), (i + 1'), (i'))"},
      {"SEL(b, f(x), i)", 0, true, "old", "", "SEL((b'), (f(x)'), (i'))"},
      {"SEL(b, by, )", 0, true, "BYTE", "", ""},
      // The one text that is not translated.
      {"SEL(1, x, y)", 0, false, "old", message(0, "E C0032", "'1' expect 'BOOL' type;")},
      {"SEL(i, x, y)", 0, false, "old", message(0, "E C0032", "'i' expect 'BOOL' type;")},
      {"SEL(b(1), x, y)", 0, false, "old", message(0, "E C0032", "'b(1)' expect 'BOOL' type;")},
      {"sel(b, x)", 0, false, "old", countMessage(0, "sel")},
      {"SEL(b, x, y, z)", 0, false, "old", countMessage(0, "SEL")},
      {"y := Sel", 0, false, "old", countMessage(5, "Sel")},
      {"Sel{b, x, y}", 0, false, "old", notAllowed(0, "b, x, y", "Sel")},
  });
}

TEST_F(Selection, Limit) {
  expectRows({
      {"y := limit(0, by, 100)", 0, true, "USINT", "", "LIMIT((0'), (by'), (100'))",
       "USINT := SINT SINT in P\nUSINT := USINT USINT in P\nUSINT := SINT SINT in P"},
      {"LIMIT(0, i, 1.5)", 0, true, "INT", "", "LIMIT((0'), (i'), (1.5'))",
       "REAL := SINT SINT in P\nREAL := INT INT in P\nREAL := REAL REAL in P"},
      {"LIMIT(lr, i, r)", 0, true, "INT", "", "LIMIT((lr'), (i'), (r'))",
       "LREAL := LREAL LREAL in P\nLREAL := INT INT in P\nLREAL := REAL REAL in P"},
      {"LIMIT(i, lr, r)", 0, true, "LREAL", "", "LIMIT((i'), (lr'), (r'))",
       "LREAL := INT INT in P\nLREAL := LREAL LREAL in P\nLREAL := REAL REAL in P"},
      {"LIMIT(r, i, i)", 0, true, "INT", "", "LIMIT((r'), (i'), (i'))",
       "REAL := REAL REAL in P\nREAL := INT INT in P\nREAL := INT INT in P"},
      {"LIMIT(s, i, di)", -2, true, "INT",
       cannotConvert(6, "STRING", "INT") + "\n" + cannotConvert(9, "INT", "INT") + "\n" +
           cannotConvert(12, "DINT", "INT"),
       "LIMIT((s'), (i'), (di'))"},
      {"limit(0, 1)", 0, false, "old", countMessage(0, "limit")},
      {"limit(0, 1, )", 0, false, "old", countMessage(0, "limit")},
      {"LIMIT{0, 1, 2}", 0, false, "old", notAllowed(0, "0, 1, 2", "LIMIT")},
  });
}

TEST_F(Selection, NothingIsWrittenForNoParameters) {
  TestTree tree;
  EXPECT_EQ(find("LIMIT")->generate(&generator, tree.parse("limit()")), "LIMIT()");
}

TEST_F(Selection, HostMessagesInOrder) {
  host.complaints = {"u", "x", "z"};
  expectRow({"LIMIT(u, x, z)", -2, true, "INVALID",
             "@9 E F0002 x in P\n@6 E F0002 u in P\n@12 E F0002 z in P\n" +
                 cannotConvert(6, "INVALID", "INVALID") + "\n" +
                 cannotConvert(9, "INVALID", "INVALID") + "\n" +
                 cannotConvert(12, "INVALID", "INVALID"),
             "LIMIT((u'), (x'), (z'))"});
}

TEST_F(Selection, StaticCode) {
  EXPECT_EQ(find("SEL")->staticCode(), "#define SEL(g, in0, in1) ((g) ? (in1) : (in0))");
  EXPECT_EQ(find("LIMIT")->staticCode(),
            "#define LIMIT(mn, in, mx) (mn <= mx) ? ((((in) < (mn)) ? (mn) : ((in) > (mx)) ? (mx) "
            ": (in))) : mx");
}

}  // namespace
