#include "support/plugin.h"

namespace {

using TypedConversion = PluginTest;

TEST_F(TypedConversion, Calls) {
  const CallRow rows[] = {
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
  };
  for (const CallRow& row : rows) expectRow(row);
}

// Names that the registry does not hold, written at an operator that it does.
TEST_F(TypedConversion, OtherNames) {
  const CallRow rows[] = {
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
  };
  for (const CallRow& row : rows) expectRow(row, "INT_TO_REAL");
}

TEST_F(TypedConversion, HostMessagesStay) {
  host.complaints = {"u"};
  expectRow({"INT_TO_REAL(u)", -2, false, "old",
             "@12 E F0002 u in P\n" + mismatch("INT_TO_REAL", "u", "INVALID")});
}

TEST_F(TypedConversion, StaticCode) {
  EXPECT_EQ(find("REAL_TO_INT")->staticCode(),
            "#define __real_to_integer(fvalue, type) \\\n({\\\n(fvalue >= 0) ? (type)(fvalue + "
            "0.5) : (type)(fvalue - 0.5);\\\n\\\n})\n");
  EXPECT_EQ(find("INT_TO_REAL")->staticCode() + find("TO_BOOL")->staticCode(), "");
}

}  // namespace
