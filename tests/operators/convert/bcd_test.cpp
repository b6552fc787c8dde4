#include "support/plugin.h"

namespace {

using Bcd = PluginTest;

TEST_F(Bcd, Calls) {
  declare("BCD_TO_INT", 1);
  declare("INT_TO_BCD", 1);
  const CallRow rows[] = {
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
  };
  for (const CallRow& row : rows) expectRow(row);
  declare("INT_TO_BCD", 0);
  expectRow({"int_to_bcd()", 0, false, "INT", countMessage(0, "INT_TO_BCD")});
}

// Names of the same pattern that the registry does not hold yet.
TEST_F(Bcd, OtherNames) {
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

}  // namespace
