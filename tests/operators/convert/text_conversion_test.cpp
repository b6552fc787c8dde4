#include "support/plugin.h"

namespace {

using TextConversion = PluginTest;

TEST_F(TextConversion, ValueToStringCalls) {
  for (const char* name : {"INT_TO_STRING", "TOD_TO_WSTRING"}) declare(name, 1);
  declare("REAL_TO_STRING", 2);
  expectRows({
      {"int_to_string(i)", -2, true, "STRING", "", "INT_TO_STRING((i'), _returnString)", ""},
      {"TOD_TO_WSTRING(td)", -2, true, "WSTRING", "", "TOD_TO_WSTRING((td'), _returnString)", ""},
      {"INT_TO_STRING(di)", 0, true, "STRING", "", "INT_TO_STRING((di'), _returnString)",
       "INT := DINT - in P"},
      {"INT_TO_STRING(di)", -1, true, "STRING", loss(0, "DINT", "INT"),
       "INT_TO_STRING((di'), _returnString)"},
      {"int_to_string(di)", -2, false, "old", mismatch("INT_TO_STRING", "INT", "DINT")},
      {"INT_TO_STRING(s)", 0, false, "old", mismatch("INT_TO_STRING", "INT", "STRING"), "", ""},
      {"TO_STRING(di)", -2, true, "STRING", "", "DINT_TO_STRING((di'), _returnString)",
       "firmware DINT_TO_STRING"},
      {"to_wstring(by)", -2, true, "WSTRING", "", "USINT_TO_WSTRING((by'), _returnString)",
       "firmware USINT_TO_WSTRING"},
      {"TO_STRING(u)", 0, true, "STRING", "", "INVALID_TO_STRING((u'), _returnString)",
       "INVALID := INVALID - in P"},
      {"TO_STRING(u)", -2, false, "old", mismatch("TO_STRING", "", "INVALID")},
      {"to_wstring(s)", 0, false, "old", mismatch("TO_WSTRING", "", "STRING"), "", ""},
      {"to_string()", 0, false, "old", countMessage(0, "TO_STRING")},
      {"to_string{i}", 0, false, "old", notAllowed(0, "i", "TO_STRING")},
      // Other numbers of inputs than one.
      {"REAL_TO_STRING(r, r)", 0, false, "old", countMessage(0, "REAL_TO_STRING")},
      {"DINT_TO_STRING(di)", 0, false, "old", countMessage(0, "DINT_TO_STRING")},
  });
}

TEST_F(TextConversion, ValueToStringQuestionsInOrder) {
  declare("INT_TO_STRING", 1);
  EXPECT_EQ(questions("INT_TO_STRING{s}"), "");
  EXPECT_EQ(questions("INT_TO_STRING(s)"), "find INT_TO_STRING 4 in \ntype s in P\nfind INT 1 in ");
  EXPECT_EQ(questions("TO_STRING(u)"), "type u in P\nINVALID := INVALID - in P");
}

TEST_F(TextConversion, ValueToStringOtherNames) {
  declare("FOO_TO_STRING", 1);
  // A source that is no type asks for no conversion.
  expectRow({"FOO_TO_STRING(i)", -2, true, "STRING", "", "FOO_TO_STRING((i'), _returnString)", ""},
            "INT_TO_STRING");
  host.operators = nullptr;
  TestTree tree;
  EXPECT_EQ(registry->findOperator("TO_STRING")->generate(&generator, tree.parse("TO_STRING(i)")),
            "INT_TO_STRING((i'), _returnString)");
}

// The result type is written before the argument is looked at.
TEST_F(TextConversion, StringToValueCalls) {
  for (const char* name : {"STRING_TO_INT", "STRING_TO_DINT", "WSTRING_TO_REAL"}) declare(name, 1);
  declare("STRING_TO_LINT", 2);
  expectRows({
      {"STRING_TO_INT(s)", -2, true, "INT", "", "STRING_TO_INT((s'))", ""},
      {"string_to_dint(ws)", -2, true, "DINT", "", "STRING_TO_DINT((ws'))", ""},
      {"WSTRING_TO_REAL(s)", -2, true, "REAL", "", "WSTRING_TO_REAL((s'))", ""},
      {"STRING_TO_INT(i)", 0, false, "INT", cannotConvert(0, "i", "STRING")},
      {"wstring_to_real(u)", 0, false, "REAL", cannotConvert(0, "u", "WSTRING")},
      {"string_to_int()", 0, false, "old", countMessage(0, "string_to_int")},
      {"string_to_int{s}", 0, false, "old", notAllowed(0, "s", "string_to_int")},
      {"STRING_TO_BOOL(s)", 0, false, "old", countMessage(0, "STRING_TO_BOOL")},
      {"string_to_lint(s, s)", 0, false, "LINT", countMessage(0, "STRING_TO_LINT")},
  });
  host.complaints = {"i"};
  expectRow({"STRING_TO_INT(i)", 0, false, "INT",
             "@14 E F0002 i in P\n" + cannotConvert(0, "i", "STRING")});
}

}  // namespace
