#include "support/plugin.h"

namespace {

using Shift = PluginTest;

TEST_F(Shift, Calls) {
  const CallRow rows[] = {
      {"SHL(by, 3)", -2, true, "USINT", "", "((u8)(SHL((by'), (3'))))", ""},
      {"i := shr(li, us)", -2, true, "LINT", "", "((i64)(SHR((li'), (us'))))", ""},
      {"shr(r, 1)", 0, false, "old", notInteger("E C0032", "shr", "r")},
      {"SHL(i, b)", 0, false, "INT", notInteger("E C0032", "SHL", "b")},
      // Without a type there is no cast.
      {"SHL(q, 1)", 0, false, "old", notInteger("E C0032", "SHL", "q"), "SHL((q'), (1'))"},
      {"shl(i)", 0, false, "old", countMessage(0, "shl")},
      {"SHR(i, 1, 2)", 0, false, "old", countMessage(0, "SHR")},
      {"shl{i, 1}", 0, false, "old", notAllowed(0, "i, 1", "shl")},
  };
  for (const CallRow& row : rows) expectRow(row);
}

TEST_F(Shift, StaticCode) {
  EXPECT_EQ(find("SHL")->staticCode(), "#define SHL(x, s) ((s) < 0 ? 0 : ((x) << (s)))");
  EXPECT_EQ(find("SHR")->staticCode(), "#define SHR(x, s) ((s) < 0 ? 0 : ((x) >> (s)))");
}

}  // namespace
