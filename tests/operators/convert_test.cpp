#include "support/plugin.h"

namespace {

using Conversion = PluginTest;

TEST_F(Conversion, TypedConversionCalls) {
  expectRows({
      {"INT_TO_REAL(i)", -2, true, "REAL", "", "((REAL_t)(i'))", ""},
      {"Int_to_Real(i + 1)", -2, true, "REAL", "", "((REAL_t)(i + 1'))", ""},
      {"INT_TO_REAL(di)", 0, true, "REAL", "", "((REAL_t)(di'))", "INT := DINT - in P"},
      {"INT_TO_REAL(di)", -1, true, "REAL", loss(0, "DINT", "INT"), "((REAL_t)(di'))"},
      {"int_to_real(di)", -2, false, "old", mismatch("INT_TO_REAL", "di", "DINT")},
      {"INT_TO_REAL(di)", -3, true, "REAL", "", "((REAL_t)(di'))"},
      {"INT_TO_REAL(u)", -2, false, "old", mismatch("INT_TO_REAL", "u", "INVALID")},
      {"INT_TO_REAL(u)", 0, true, "REAL", "", "((REAL_t)(u'))", "INT := INVALID - in P"},
      {"BYTE_TO_SINT(us)", -2, true, "SINT", "", "((SINT_t)(us'))", ""},
      {"DT_TO_TOD(dt)", -2, true, "TOD", "", "((TOD_t)(dt'))", ""},
      {"LREAL_TO_REAL(lr)", -2, true, "REAL", "", "((REAL_t)(lr'))", ""},
      {"REAL_TO_LREAL(r)", -2, true, "LREAL", "", "((LREAL_t)(r'))", ""},
      {"INT_TO_REAL()", 0, false, "old", countMessage(0, "INT_TO_REAL")},
      {"int_to_real(i, i)", 0, false, "old", countMessage(0, "INT_TO_REAL")},
      {"int_to_real", 0, false, "old", countMessage(0, "INT_TO_REAL")},
      {"int_to_real{i}", 0, false, "old", abnormal(0, "INT_TO_REAL")},
      {"REAL_TO_DINT(r)", -2, true, "DINT", "", "__real_to_integer((r'), DINT_t)", ""},
      {"lreal_to_tod(lr)", -2, true, "TOD", "", "__real_to_integer((lr'), TOD_t)", ""},
      {"REAL_TO_BYTE(lr)", -1, true, "BYTE", loss(0, "LREAL", "REAL"),
       "__real_to_integer((lr'), BYTE_t)"},
      {"INT_TO_BOOL(i)", -2, true, "BOOL", "", "(((i'))!=0)", ""},
      {"TOD_TO_BOOL(i)", -2, false, "old", mismatch("TOD_TO_BOOL", "i", "INT")},
      {"TO_BOOL(s)", -2, true, "BOOL", "", "(((s'))!=0)", ""},
      {"TO_BOOL(q)", -2, true, "BOOL", "", "(((q'))!=0)", ""},
      {"TO_BOOL(u)", 0, true, "BOOL", "", "(((u'))!=0)", "INVALID := INVALID - in P"},
      {"TO_BOOL(u)", -1, true, "BOOL", loss(0, "INVALID", "INVALID"), "(((u'))!=0)"},
      {"to_bool(u)", -2, false, "old", mismatch("TO_BOOL", "u", "INVALID")},
  });
}

// Names that the registry does not hold, written at an operator that it does.
TEST_F(Conversion, TypedConversionOtherNames) {
  expectRows(
      {
          {"FOO_TO_INT(i)", 0, false, "old", message(0, "E C0077", "Unknown type 'FOO';")},
          {"INT_TO_FOO(i)", 0, true, "FOO", "", ""},
          {"LONG(i)", 0, false, "old", ""},
          {"X(u)", 0, false, "old", ""},
          {"TO_INT(r)", 0, true, "INT", "", "((INT_t)(r'))"},
          {"TO_INT(n)", 0, true, "INT", "", "((INT_t)(n'))"},
          {"TO_INT(p)", 0, true, "INT", "", "((INT_t)(p'))"},
          {"TO_INT(st)", 0, true, "INT", "", ""},
          {"to_int(s)", 0, true, "INT", "", "TO_INT((s'))"},
          {"INT_TO_STRING(i)", 0, true, "STRING", "", "INT_TO_STRING((i'))"},
          {"A_B_TO_INT(i)", 0, false, "old", message(0, "E C0077", "Unknown type 'A_B';")},
      },
      "INT_TO_REAL");
}

TEST_F(Conversion, TypedConversionHostMessagesStay) {
  host.complaints = {"u"};
  expectRow({"INT_TO_REAL(u)", -2, false, "old",
             "@12 E F0002 u in P\n" + mismatch("INT_TO_REAL", "u", "INVALID")});
}

TEST_F(Conversion, TypedConversionStaticCode) {
  EXPECT_EQ(find("REAL_TO_INT")->staticCode(),
            "#define __real_to_integer(fvalue, type) \\\n({\\\n(fvalue >= 0) ? (type)(fvalue + "
            "0.5) : (type)(fvalue - 0.5);\\\n\\\n})\n");
  EXPECT_EQ(find("INT_TO_REAL")->staticCode() + find("TO_BOOL")->staticCode(), "");
}

TEST_F(Conversion, GenericConversionCalls) {
  expectRows({
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
  });
}

TEST_F(Conversion, GenericConversionStaticCodeAndOtherNames) {
  EXPECT_EQ(find("TO_TIME")->staticCode(), find("REAL_TO_INT")->staticCode());
  TestTree tree;
  for (const char* source : {"INT_TO_INT(r)", "TO_FOO(r)", "TO(r)", "TO_INT()", "TO_INT{r, r}"}) {
    EXPECT_EQ(find("TO_INT")->generate(&generator, tree.parse(source)), "") << source;
  }
}

TEST_F(Conversion, TruncCalls) {
  expectRows({
      {"TRUNC(r)", 0, true, "DINT", "", "((i32)(r'))", "LREAL := REAL - in P"},
      {"trunc(lr)", -1, true, "DINT", loss(0, "LREAL", "LREAL"), "((i32)(lr'))"},
      {"TRUNC(by)", -3, true, "DINT", "", "((i32)(by'))", "LREAL := USINT - in P"},
      {"trunc(i)", -2, false, "old", mismatch("TRUNC", "i", "INT"), "((i32)(i'))"},
      {"trunc(b)", 0, false, "old", mismatch("TRUNC", "b", "BOOL"), "", ""},
      {"TRUNC(u)", 0, false, "old", mismatch("TRUNC", "u", "INVALID"), "", ""},
      {"trunc(r, r)", 0, false, "old", countMessage(0, "TRUNC")},
      {"trunc{r}", 0, false, "old", abnormal(0, "TRUNC")},
  });
}

TEST_F(Conversion, BcdCalls) {
  declare("BCD_TO_INT", 1);
  declare("INT_TO_BCD", 1);
  expectRows({
      {"BCD_TO_INT(us)", -2, true, "INT", "", "BCD_TO_INT((us'))", ""},
      {"bcd_to_int(by)", -2, true, "INT", "", "BCD_TO_INT((by'))", ""},
      {"BCD_TO_INT(i)", 0, false, "INT", cannotConvert(0, "i", "Byte")},
      {"int_to_bcd(si)", -2, true, "BYTE", "", "INT_TO_BCD((si'))", ""},
      {"INT_TO_BCD(i)", -2, true, "BYTE", "", "INT_TO_BCD((i'))", ""},
      {"INT_TO_BCD(by)", -2, true, "BYTE", "", "INT_TO_BCD((by'))", ""},
      {"INT_TO_BCD(w)", -2, true, "BYTE", "", "INT_TO_BCD((w'))", ""},
      {"INT_TO_BCD(di)", 0, false, "BYTE", cannotConvert(0, "di", "BYTE")},
      {"bcd_to_int(us, us)", 0, false, "old", countMessage(0, "bcd_to_int")},
      {"bcd_to_int{us}", 0, false, "old", notAllowed(0, "us", "bcd_to_int")},
  });
  declare("INT_TO_BCD", 0);
  expectRow({"int_to_bcd()", 0, false, "INT", countMessage(0, "INT_TO_BCD")});
}

// Names of the same pattern that the registry does not hold yet.
TEST_F(Conversion, BcdOtherNames) {
  const CallRow rows[] = {
      {"BCD_TO_BYTE(ui)", 0, false, "BYTE", cannotConvert(0, "ui", "Byte")},
      {"BCD_TO_WORD(ui)", 0, true, "WORD", "", "BCD_TO_WORD((ui'))"},
      {"BCD_TO_DWORD(ui)", 0, false, "DWORD", cannotConvert(0, "ui", "DWORD")},
      {"BCD_TO_LINT(s)", 0, true, "LINT", "", "BCD_TO_LINT((s'))"},
      {"BYTE_TO_BCD(ui)", 0, false, "BYTE", cannotConvert(0, "ui", "BYTE")},
      {"LINT_TO_BCD(s)", 0, true, "LINT", "", "LINT_TO_BCD((s'))"},
  };
  for (const CallRow& row : rows) {
    const std::string source = row.source;
    declare(source.substr(0, source.find('(')), 1);
    expectRow(row, source[0] == 'B' && source[1] == 'C' ? "BCD_TO_INT" : "INT_TO_BCD");
  }
}

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
