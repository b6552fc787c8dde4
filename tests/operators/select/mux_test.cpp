#include "support/plugin.h"

namespace {

using Mux = PluginTest;

TEST_F(Mux, ResultTypes) {
  expectRows({
      {"mux(i, by, by1)", 0, true, "USINT", "", "((u8)FC_MUX_INT(2, i', (u8)by', (u8)by1'))",
       "USINT := USINT USINT in P\nUSINT := USINT USINT in P\nP -> MUX @0\nP -> FC_MUX_INT @0"},
      {"y := MUX(us, i, us, b + 1)", 0, true, "BOOL", "",
       "((u8)FC_MUX_INT(3, us', (u8)i', (u8)us', (u8)b + 1'))",
       "BOOL := INT INT in P\nBOOL := USINT USINT in P\nBOOL := BOOL BOOL in P\nP -> MUX @5\nP -> "
       "FC_MUX_INT @5"},
      {"MUX(i, li, i)", 0, true, "LINT", "", "((i64)FC_MUX_LONGLONG(2, i', (i64)li', (i64)i'))",
       "LINT := LINT LINT in P\nLINT := INT INT in P\nP -> MUX @0\nP -> FC_MUX_LONGLONG @0"},
      {"MUX(i, lr, ul)", 0, true, "LREAL", "", "((f64)FC_MUX_LONGREAL(2, i', (f64)lr', (f64)ul'))"},
      {"MUX(i, i, ul)", 0, true, "ULINT", "", "((u64)FC_MUX_LONGLONG(2, i', (u64)i', (u64)ul'))"},
      {"MUX(i, ul, r)", 0, true, "REAL", "", "((f32)FC_MUX_LONGREAL(2, i', (f32)ul', (f32)r'))"},
      {"MUX(i, lt, i)", 0, true, "LTIME", "", "((i64)FC_MUX_LONGLONG(2, i', (i64)lt', (i64)i'))"},
      {"MUX(i, i, t, di)", 0, true, "DINT", "",
       "((i32)FC_MUX_INT(3, i', (i32)i', (i32)t', (i32)di'))",
       "DINT := INT INT in P\nDINT := TIME TIME in P\nDINT := DINT DINT in P\nP -> MUX @0\nP -> "
       "FC_MUX_INT @0"},
      {"MUX(i, dt, lr)", 0, true, "DT", "", "((u32)FC_MUX_INT(2, i', (u32)dt', (u32)lr'))"},
      // The scan ends at what reads as a BOOL.
      {"MUX(i, true, s)", 0, true, "BOOL", "", "((u8)FC_MUX_INT(2, i', (u8)true', (u8)s'))"},
      {"MUX(i, b, s)", 0, true, "BOOL", "", "((u8)FC_MUX_INT(2, i', (u8)b', (u8)s'))"},
      {"MUX(1, 200, i)", 0, true, "INT", "", "((i16)FC_MUX_INT(2, 1', (i16)200', (i16)i'))",
       "INT := INT INT in P\nINT := INT INT in P\nP -> MUX @0\nP -> FC_MUX_INT @0\n"
       "constant ((i16)FC_MUX_INT(2, 1' SINT\n"
       "constant ((i16)FC_MUX_INT(2, 1', (i16)200' INT"},
  });
}

TEST_F(Mux, Failures) {
  expectRows({
      {"mux(i, i)", 0, false, "old", countMessage(0, "mux")},
      {"Mux{i, i, i}", 0, false, "old", notAllowed(0, "i, i, i", "Mux")},
      {"mux(r, i, i)", 0, false, "old", notInteger("E C0131", "mux", "r")},
      {"mux(i, i, u)", 0, false, "old", notAllowed(0, "u", "mux")},
      {"mux(i, i, s)", 0, false, "old", notAllowed(10, "s", "mux")},
      // Every input is compared, whatever has failed before.
      {"MUX(i, i, di)", -2, false, "DINT",
       cannotConvert(7, "INT", "DINT") + "\n" + cannotConvert(10, "DINT", "DINT")},
  });
}

TEST_F(Mux, RecordsTypesOnTheTree) {
  TestTree tree;
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
            "((u16)FC_MUX_INT(2, i', (u16)si', (u16)di'))");
}

}  // namespace
