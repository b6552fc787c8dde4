#include "support/plugin.h"

namespace {

using MinMax = PluginTest;

// A rating of -2 makes every comparison fail, of 0 every one succeed; the calls tell
// which parameter was compared with what.
TEST_F(MinMax, Categories) {
  expectRows({
      {"MAX(r, r)", -2, true, "REAL", "", "MAX((r'), (r'))", ""},
      {"MAX(r, i)", 0, true, "REAL", "", "MAX((r'), (i'))", "REAL := INT i in P"},
      {"MAX(r, i)", -2, false, "REAL", cannotConvert(7, "INT", "REAL")},
      {"MAX(i, r)", 0, true, "REAL", "", "MAX((i'), (r'))", "REAL := INT i in P"},
      {"MAX(i, lr)", -2, false, "LREAL", cannotConvert(4, "INT", "LREAL")},
      {"MIN(r, lr)", -2, true, "LREAL", "", "MIN((r'), (lr'))", ""},
      {"MIN(lr, r)", -2, true, "LREAL", "", "MIN((lr'), (r'))", ""},
      {"MIN(by, by1)", -2, true, "BYTE", "", "MIN((by'), (by1'))", ""},
      {"MAX(ud, i)", 0, true, "LINT", "", "MAX((ud'), (i'))", "LINT := UDINT ud in P"},
      {"MAX(dw, i)", -2, false, "LINT", cannotConvert(4, "DWORD", "LINT")},
      {"MAX(di, us)", 0, true, "DINT", "", "MAX((di'), (us'))", "DINT := USINT us in P"},
      {"MAX(us, ui)", 0, true, "DINT", "", "MAX((us'), (ui'))", "DINT := UINT ui in P"},
      {"MAX(ui, di)", 0, true, "DINT", "", "MAX((ui'), (di'))", "DINT := UINT ui in P"},
      {"MAX(i, ui)", 0, true, "DINT", "", "MAX((i'), (ui'))", "DINT := UINT ui in P"},
      {"MAX(ui, i)", 0, true, "DINT", "", "MAX((ui'), (i'))", "DINT := UINT ui in P"},
      {"MAX(ui, i)", -2, false, "DINT", cannotConvert(4, "UINT", "DINT")},
      {"MAX(b, si)", 0, true, "BOOL", "", "MAX((b'), (si'))", "SINT := BOOL b in P"},
      {"MAX(b, si)", -2, false, "BOOL", cannotConvert(4, "BOOL", "SINT")},
      {"MAX(b, us)", 0, true, "INT", "", "MAX((b'), (us'))",
       "USINT := BOOL b in P\nINT := USINT us in P"},
      {"MAX(di, t)", 0, true, "DINT", "", "MAX((di'), (t'))", "DINT := TIME t in P"},
      {"MAX(ud, t)", 0, true, "LINT", "", "MAX((ud'), (t'))",
       "LINT := UDINT ud in P\nUDINT := TIME t in P"},
      {"MAX(t, t)", 0, true, "TIME", "", "MAX((t'), (t'))", "TIME := TIME t in P"},
      {"MAX(t, s)", -2, false, "TIME", cannotConvert(7, "STRING", "TIME")},
      {"MAX(q, i)", 0, true, "INT", "", "MAX((q'), (i'))", "INT := INVALID q in P"},
      {"MAX(u, i)", 0, false, "INVALID", ""},
      {"MIN(i, u)", 0, false, "INVALID", ""},
      {"min(i)", 0, false, "old", countMessage(0, "min")},
      {"MAX(i, i, i)", 0, false, "old", countMessage(0, "MAX")},
  });
}

TEST_F(MinMax, AssignmentDecidesForEqualTypes) {
  expectRows({
      {"di := MAX(i, i1)", 0, true, "DINT", "", "MAX((i'), (i1'))", "DINT := INT i in P"},
      {"si := MAX(i, i1)", -2, false, "SINT", cannotConvert(10, "INT", "SINT")},
      {"by := MAX(i, i1)", -2, false, "USINT", cannotConvert(10, "INT", "BYTE")},
      {"r := MAX(lr, lr)", -1, true, "REAL", loss(9, "LREAL", "REAL"), "MAX((lr'), (lr'))"},
      {"di := MAX(i, si)", 0, true, "INT", "", "MAX((i'), (si'))", "INT := SINT si in P"},
      {"si := MAX(u, u)", 0, false, "INVALID", "", "", ""},
      // Without a target there is no type to compare with.
      {" := MAX(i, i1)", 0, true, "INVALID", "", "MAX((i'), (i1'))", "INVALID := INT i in P"},
  });
  host.complaints = {"di"};
  expectRow({"di := MAX(i, si)", 0, true, "INT", "@0 E F0002 di in P", "MAX((i'), (si'))"});
}

TEST_F(MinMax, StaticCode) {
  EXPECT_EQ(find("MIN")->staticCode(), "#define MIN(x, y) ((x) < (y) ? (x) : (y))");
  EXPECT_EQ(find("MAX")->staticCode(), "#define MAX(x, y) ((x) > (y) ? (x) : (y))");
}

}  // namespace
