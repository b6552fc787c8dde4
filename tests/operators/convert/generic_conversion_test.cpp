#include "support/plugin.h"

namespace {

using GenericConversion = PluginTest;

TEST_F(GenericConversion, Calls) {
  const CallRow rows[] = {
      {"TO_INT(i)", -2, true, "INT", "", "((INT_t)(i'))", ""},
      {"TO_TIME(di)", -2, true, "TIME", "", "((TIME_t)(di'))", ""},
      {"TO_DINT(lr)", -2, true, "DINT", "", "__real_to_integer((lr'), DINT_t)", ""},
      {"to_byte(r + 1)", -2, true, "BYTE", "", "__real_to_integer((r + 1'), BYTE_t)", ""},
      {"TO_TIME(r)", -2, true, "TIME", "", "((TIME_t)(r'))", ""},
      {"TO_LREAL(r)", -2, true, "LREAL", "", "((LREAL_t)(r'))", ""},
      {"TO_INT(s)", -2, true, "INT", "", "STRING_TO_INT((s'))", "firmware STRING_TO_INT"},
      {"to_int(ws)", -2, true, "INT", "", "WSTRING_TO_INT((ws'))", "firmware WSTRING_TO_INT"},
      {"TO_INT(u)", 0, true, "INT", "", "", "INVALID := INVALID - in P"},
      {"to_int(u)", -2, false, "old", mismatch("TO_INT", "u", "INVALID")},
      {"TO_INT(i, i)", 0, false, "old", countMessage(0, "TO_INT"), "((INT_t)(i'), (i'))"},
      // Generated all the same: a single leaf stands in for a list.
      {"TO_INT{r}", 0, false, "old", abnormal(0, "TO_INT"), "__real_to_integer((r'), INT_t)"},
  };
  for (const CallRow& row : rows) expectRow(row);
}

TEST_F(GenericConversion, StaticCodeAndOtherNames) {
  EXPECT_EQ(find("TO_TIME")->staticCode(), find("REAL_TO_INT")->staticCode());
  TestTree tree;
  for (const char* source : {"INT_TO_INT(r)", "TO_FOO(r)", "TO(r)", "TO_INT()", "TO_INT{r, r}"}) {
    EXPECT_EQ(find("TO_INT")->generate(&generator, tree.parse(source)), "") << source;
  }
}

}  // namespace
