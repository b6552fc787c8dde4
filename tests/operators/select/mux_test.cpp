#include "support/plugin.h"

namespace {

using Mux = PluginTest;

TEST_F(Mux, ResultTypes) {
  const CallRow rows[] = {
      {"mux(i, by, by1)", 0, true, "USINT", "",
       "((USINT_c)FC_MUX_INT(2, i', (USINT_c)by', (USINT_c)by1'))",
       "USINT := USINT USINT in P\nUSINT := USINT USINT in P\nP -> MUX @0\nP -> FC_MUX_INT @0"},
      {"y := MUX(us, i, us, b + 1)", 0, true, "BOOL", "",
       "((BOOL_c)FC_MUX_INT(3, us', (BOOL_c)i', (BOOL_c)us', (BOOL_c)b + 1'))",
       "BOOL := INT INT in P\nBOOL := USINT USINT in P\nBOOL := BOOL BOOL in P\nP -> MUX @5\nP -> "
       "FC_MUX_INT @5"},
      {"MUX(i, li, i)", 0, true, "LINT", "",
       "((LINT_c)FC_MUX_LONGLONG(2, i', (LINT_c)li', (LINT_c)i'))",
       "LINT := LINT LINT in P\nLINT := INT INT in P\nP -> MUX @0\nP -> FC_MUX_LONGLONG @0"},
      {"MUX(i, lr, ul)", 0, true, "LREAL", "",
       "((LREAL_c)FC_MUX_LONGREAL(2, i', (LREAL_c)lr', (LREAL_c)ul'))"},
      {"MUX(i, i, ul)", 0, true, "ULINT", "",
       "((ULINT_c)FC_MUX_LONGLONG(2, i', (ULINT_c)i', (ULINT_c)ul'))"},
      {"MUX(i, ul, r)", 0, true, "REAL", "",
       "((REAL_c)FC_MUX_LONGREAL(2, i', (REAL_c)ul', (REAL_c)r'))"},
      {"MUX(i, lt, i)", 0, true, "LTIME", "",
       "((LTIME_c)FC_MUX_LONGLONG(2, i', (LTIME_c)lt', (LTIME_c)i'))"},
      {"MUX(i, i, t, di)", 0, true, "DINT", "",
       "((DINT_c)FC_MUX_INT(3, i', (DINT_c)i', (DINT_c)t', (DINT_c)di'))",
       "DINT := INT INT in P\nDINT := TIME TIME in P\nDINT := DINT DINT in P\nP -> MUX @0\nP -> "
       "FC_MUX_INT @0"},
      {"MUX(i, dt, lr)", 0, true, "DT", "", "((DT_c)FC_MUX_INT(2, i', (DT_c)dt', (DT_c)lr'))"},
      // The scan ends at what reads as a BOOL.
      {"MUX(i, yes, s)", 0, true, "BOOL", "",
       "((BOOL_c)FC_MUX_INT(2, i', (BOOL_c)yes', (BOOL_c)s'))"},
      {"MUX(1, 2, i)", 0, true, "INT", "", "((INT_c)FC_MUX_INT(2, 1', (INT_c)2', (INT_c)i'))",
       "INT := INT INT in P\nINT := INT INT in P\nP -> MUX @0\nP -> FC_MUX_INT @0\n"
       "constant ((INT_c)FC_MUX_INT(2, 1' INT\n"
       "constant ((INT_c)FC_MUX_INT(2, 1', (INT_c)2' INT"},
  };
  for (const CallRow& row : rows) expectRow(row);
}

TEST_F(Mux, Failures) {
  const CallRow rows[] = {
      {"mux(i, i)", 0, false, "old", countMessage(0, "mux")},
      {"Mux{i, i, i}", 0, false, "old", notAllowed(0, "i, i, i", "Mux")},
      {"mux(r, i, i)", 0, false, "old", notInteger("E C0131", "mux", "r")},
      {"mux(i, i, u)", 0, false, "old", notAllowed(0, "u", "mux")},
      {"mux(i, i, s)", 0, false, "old", notAllowed(10, "s", "mux")},
      // Every input is compared, whatever has failed before.
      {"MUX(i, i, di)", -2, false, "DINT",
       cannotConvert(7, "INT", "DINT") + "\n" + cannotConvert(10, "DINT", "DINT")},
  };
  for (const CallRow& row : rows) expectRow(row);
}

TEST_F(Mux, RecordsTypesOnTheTree) {
  vel::TreeBuilder tree;
  Invocation* call = tree.parse("MUX(i, si, di)");
  auto* input = static_cast<Expression*>(call->leaf(1)->leaf(1));
  input->setBasicType(vel::BasicDataType::None);
  std::vector<vel::VELMessage> messages;
  std::string resultType;
  EXPECT_TRUE(find("MUX")->check(&host, call, messages, resultType, "P"));
  EXPECT_EQ(call->basicType(), vel::BasicDataType::DInt);
  EXPECT_EQ(input->basicType(), vel::BasicDataType::SInt);
  // Without a record the result is a UINT.
  vel::ASTNode* other = tree.node(vel::ASTType{3}, {call->leaf(0), call->leaf(1)});
  EXPECT_EQ(find("MUX")->generate(&generator, other),
            "((UINT_c)FC_MUX_INT(2, i', (UINT_c)si', (UINT_c)di'))");
}

}  // namespace
