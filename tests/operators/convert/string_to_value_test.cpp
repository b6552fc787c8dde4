#include "support/plugin.h"

namespace {

using StringToValue = PluginTest;

// The result type is written before the argument is looked at.
TEST_F(StringToValue, Calls) {
  for (const char* name : {"STRING_TO_INT", "STRING_TO_DINT", "WSTRING_TO_REAL"}) declare(name, 1);
  declare("STRING_TO_LINT", 2);
  const CallRow rows[] = {
      {"STRING_TO_INT(s)", -2, true, "INT", "", "STRING_TO_INT((s'))", ""},
      {"string_to_dint(ws)", -2, true, "DINT", "", "STRING_TO_DINT((ws'))", ""},
      {"WSTRING_TO_REAL(s)", -2, true, "REAL", "", "WSTRING_TO_REAL((s'))", ""},
      {"STRING_TO_INT(i)", 0, false, "INT", cannotConvert(0, "i", "STRING")},
      {"wstring_to_real(u)", 0, false, "REAL", cannotConvert(0, "u", "WSTRING")},
      {"string_to_int()", 0, false, "old", countMessage(0, "string_to_int")},
      {"string_to_int{s}", 0, false, "old", notAllowed(0, "s", "string_to_int")},
      {"STRING_TO_BOOL(s)", 0, false, "old", countMessage(0, "STRING_TO_BOOL")},
      {"string_to_lint(s, s)", 0, false, "LINT", countMessage(0, "STRING_TO_LINT")},
  };
  for (const CallRow& row : rows) expectRow(row);
  host.complaints = {"i"};
  expectRow({"STRING_TO_INT(i)", 0, false, "INT",
             "@14 E F0002 i in P\n" + cannotConvert(0, "i", "STRING")});
}

}  // namespace
