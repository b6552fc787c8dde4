#include "support/plugin.h"

namespace {

using Numeric = PluginTest;

std::string unsuitable(const std::string& name, const std::string& type) {
  return message(0, "E C0072", "Operator '" + name + "' cannot be used for type '" + type + "';");
}

TEST_F(Numeric, Calls) {
  for (const char* name : {"ABS", "SQRT", "SIN"}) declare(name, 1);
  declare("EXPT", 2);
  declare("LN", 0);
  expectRows({
      {"sqrt(r)", 0, true, "REAL", "", "SQRT((r'))", "REAL := REAL REAL in P"},
      {"SQRT(i)", 0, true, "LREAL", "", "SQRT((i'))", "LREAL := INT INT in P"},
      {"y := SIN(li)", -1, true, "LREAL",
       message(5, "W C0197",
               "Implicit conversion from type 'LINT' to type 'LREAL' : may change the symbol"),
       "SIN((li'))"},
      {"SIN(i)", -2, false, "LREAL", cannotConvert(0, "INT", "LREAL")},
      {"EXPT(r, s)", 0, true, "REAL", "", "EXPT((r'), (s'))", "REAL := REAL REAL in P"},
      {"EXPT(r, )", 0, true, "REAL", "", ""},
      {"ABS(di)", -2, true, "DINT", "", "ABS((di'))", ""},
      {"abs(by)", -2, true, "USINT", "", "ABS((by'))", ""},
      {"abs(r)", -2, true, "REAL", "", "FABS((r'))", ""},
      {"ABS(1.5)", -2, true, "REAL", "", "FABS((1.5'))", ""},
      {"sin(s)", 0, false, "old", unsuitable("sin", "STRING")},
      {"SQRT(u)", 0, false, "old", unsuitable("SQRT", "INVALID")},
      {"sqrt(r, r)", 0, false, "old", countMessage(0, "sqrt")},
      {"sqrt{r}", 0, false, "old", notAllowed(0, "r", "sqrt")},
      {"COS(r)", 0, false, "old", countMessage(0, "COS")},
      // Declared without inputs.
      {"ln()", 0, false, "old", countMessage(0, "ln")},
  });
}

TEST_F(Numeric, Scopes) {
  declare("SQRT", 1);
  TestTree tree;
  std::vector<vel::VELMessage> messages;
  std::string resultType;
  // The fallback for the unit's name is not asked.
  EXPECT_TRUE(find("SQRT")->check(&host, tree.parse("SQRT(i)", ""), messages, resultType, "P"));
  EXPECT_EQ(TestHost::take(host.calls), "LREAL := INT INT in ");
  // For an expression the type recorded on it counts, for all else that of the call.
  Invocation* call = tree.parse("ABS(i)");
  static_cast<Expression*>(call->leaf(1)->leaf(0))->setBasicType(vel::BasicDataType::LReal);
  EXPECT_EQ(find("ABS")->generate(&generator, call), "FABS((i'))");
  EXPECT_EQ(find("ABS")->generate(&generator, tree.parse("ABS(r(1))")), "ABS((r(1)'))");
  EXPECT_EQ(find("ABS")->generate(&generator, tree.parse("r(i(1))")), "FABS((i(1)'))");
}

TEST_F(Numeric, MoveCalls) {
  expectRows({
      {"MOVE(i + 1)", -2, true, "INT", "", "((i + 1'))", ""},
      {"MOVE(by)", -2, true, "USINT", "", "((by'))", ""},
      {"r := MOVE(lr)", -1, true, "LREAL", loss(10, "LREAL", "REAL"), "((lr'))",
       "REAL := LREAL LREAL in P"},
      {"i := move(s)", -2, false, "STRING", cannotConvert(10, "STRING", "INT")},
      {"i := MOVE(u)", -2, false, "INVALID", "", "", ""},
      {" := MOVE(i)", 0, true, "INT", "", "((i'))", "INVALID := INT INT in P"},
      {"i := MOVE(q)", 0, true, "INVALID", "", "((q'))"},
      {"move()", 0, false, "old", countMessage(0, "move")},
      {"MOVE(a, b)", 0, false, "old", countMessage(0, "MOVE")},
      {"i := MOVE", 0, false, "old", countMessage(5, "MOVE")},
      {"move{a}", 0, false, "old", notAllowed(0, "a", "move")},
  });
}

}  // namespace
