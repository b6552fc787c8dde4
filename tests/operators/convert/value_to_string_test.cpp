#include "support/plugin.h"

namespace {

using ValueToString = PluginTest;

TEST_F(ValueToString, Calls) {
  for (const char* name : {"INT_TO_STRING", "TOD_TO_WSTRING", "BYTE_TO_STRING"}) {
    host.declare(name, vel::POUType::Function, {vel::SymbolVar::kInput});
  }
  host.declare("REAL_TO_STRING", vel::POUType::Function,
               {vel::SymbolVar::kInput, vel::SymbolVar::kInput});
  const CallRow rows[] = {
      {"int_to_string(i)", -2, true, "STRING", "", "INT_TO_STRING((i'), _returnString)", ""},
      {"TOD_TO_WSTRING(td)", -2, true, "WSTRING", "", "TOD_TO_WSTRING((td'), _returnString)", ""},
      {"BYTE_TO_STRING(us)", -2, true, "STRING", "", "BYTE_TO_STRING((us'), _returnString)", ""},
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
      {"int_to_string(i, i)", 0, false, "old", countMessage(0, "INT_TO_STRING")},
      {"to_string()", 0, false, "old", countMessage(0, "TO_STRING")},
      {"to_string", 0, false, "old", countMessage(0, "TO_STRING")},
      {"to_string{i}", 0, false, "old", notAllowed(0, "i", "TO_STRING")},
      // Other numbers of inputs than one.
      {"REAL_TO_STRING(r, r)", 0, false, "old", countMessage(0, "REAL_TO_STRING")},
      {"REAL_TO_STRING(r)", 0, false, "old", countMessage(0, "REAL_TO_STRING")},
      {"DINT_TO_STRING(di)", 0, false, "old", countMessage(0, "DINT_TO_STRING")},
  };
  for (const CallRow& row : rows) expectRow(row);
}

TEST_F(ValueToString, OtherNames) {
  host.declare("FOO_TO_STRING", vel::POUType::Function, {vel::SymbolVar::kInput});
  vel::TreeBuilder tree;
  std::vector<vel::VELMessage> messages;
  std::string resultType;
  host.rating = -2;
  // A source that is no type asks for no conversion.
  EXPECT_TRUE(find("INT_TO_STRING")
                  ->check(&host, tree.parse("FOO_TO_STRING(i)"), messages, resultType, "P"));
  EXPECT_EQ(FakeHost::describe(messages) + resultType, "STRING");
  host.registry = nullptr;
  EXPECT_EQ(registry->findOperator("TO_STRING")->generate(&generator, tree.parse("TO_STRING(i)")),
            "INT_TO_STRING((i'), _returnString)");
  EXPECT_EQ(host.takeCalls(), "");
}

}  // namespace
