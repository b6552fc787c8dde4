#include "support/plugin.h"

namespace {

using Bcd = PluginTest;

TEST_F(Bcd, Calls) {
  host.declare("BCD_TO_INT", vel::POUType::Function, {vel::SymbolVar::kInput});
  host.declare("INT_TO_BCD", vel::POUType::Function, {vel::SymbolVar::kInput});
  const CallRow rows[] = {
      {"BCD_TO_INT(us)", -2, true, "INT", "", "BCD_TO_INT((us'))", ""},
      {"bcd_to_int(by)", -2, true, "INT", "", "BCD_TO_INT((by'))", ""},
      {"BCD_TO_INT(i)", 0, false, "INT", cannotConvert(0, "i", "Byte")},
      {"BCD_TO_INT(u)", 0, false, "INT", cannotConvert(0, "u", "Byte")},
      {"int_to_bcd(si)", -2, true, "BYTE", "", "INT_TO_BCD((si'))", ""},
      {"INT_TO_BCD(i)", -2, true, "BYTE", "", "INT_TO_BCD((i'))", ""},
      {"INT_TO_BCD(by)", -2, true, "BYTE", "", "INT_TO_BCD((by'))", ""},
      {"INT_TO_BCD(w)", -2, true, "BYTE", "", "INT_TO_BCD((w'))", ""},
      {"INT_TO_BCD(di)", 0, false, "BYTE", cannotConvert(0, "di", "BYTE")},
      {"INT_TO_BCD(u)", 0, false, "BYTE", cannotConvert(0, "u", "BYTE")},
      {"bcd_to_int(us, us)", 0, false, "old", countMessage(0, "bcd_to_int")},
      {"bcd_to_int{us}", 0, false, "old", notAllowed(0, "us", "bcd_to_int")},
  };
  for (const CallRow& row : rows) expectRow(row);
  host.declare("INT_TO_BCD", vel::POUType::Function, {});
  expectRow({"int_to_bcd()", 0, false, "INT", countMessage(0, "INT_TO_BCD")});
}

// Names of the same pattern that the registry does not hold yet.
TEST_F(Bcd, OtherNames) {
  struct Row {
    const char* source;
    const char* op;
    const char* resultType;
    std::string messages;
  };
  const Row rows[] = {
      {"BCD_TO_BYTE(ui)", "BCD_TO_INT", "BYTE", cannotConvert(0, "ui", "Byte")},
      {"BCD_TO_WORD(ui)", "BCD_TO_INT", "WORD", ""},
      {"BCD_TO_DWORD(ui)", "BCD_TO_INT", "DWORD", cannotConvert(0, "ui", "DWORD")},
      {"BCD_TO_LINT(s)", "BCD_TO_INT", "LINT", ""},
      {"BYTE_TO_BCD(ui)", "INT_TO_BCD", "BYTE", cannotConvert(0, "ui", "BYTE")},
      {"WORD_TO_BCD(ui)", "INT_TO_BCD", "WORD", ""},
      {"DWORD_TO_BCD(ui)", "INT_TO_BCD", "DWORD", cannotConvert(0, "ui", "DWORD")},
      {"LINT_TO_BCD(s)", "INT_TO_BCD", "LINT", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.source);
    vel::TreeBuilder tree;
    Invocation* call = tree.parse(row.source);
    host.declare(vel::TreeBuilder::text(call->leaf(0)), vel::POUType::Function,
                 {vel::SymbolVar::kInput});
    std::vector<vel::VELMessage> messages;
    std::string resultType;
    EXPECT_EQ(find(row.op)->check(&host, call, messages, resultType, "P"), row.messages.empty());
    EXPECT_EQ(resultType, row.resultType);
    EXPECT_EQ(FakeHost::describe(messages), row.messages);
  }
}

}  // namespace
