#include "support/plugin.h"

namespace {

class Edge : public PluginTest {
 protected:
  // Places the hidden variable of a call in the unit P.
  std::string remember(const std::string& op, const std::string& condition, std::uint32_t raw) {
    const std::string digest = AstNodeHelper::opExpTextToMd5HexText(op, condition);
    host.place("P:" + digest, raw);
    return digest;
  }
};

TEST_F(Edge, Calls) {
  remember("MEP", "b", 12);
  remember("mef", "b + 1", 4000000000);
  remember("MEP", "TRUE", 0);
  remember("MEP", "true", 1);
  remember("mep", "true", 2);
  expectRows({
      {"MEP(b)", -2, true, "BOOL", "", "(_mep(b',((u8*)(_m + 12))))", ""},
      {"mef(b + 1)", -2, true, "BOOL", "", "(_mef(b + 1',((u8*)(_m + 4000000000))))", ""},
      {"MEP(TRUE)", -2, true, "BOOL", "", "(_mep(TRUE',((u8*)(_m + 0))))", ""},
      {"MEP(true)", -2, true, "BOOL", "", "(_mep(true',((u8*)(_m + 1))))", ""},
      {"mep(true)", -2, true, "BOOL", "", "(_mep(true',((u8*)(_m + 2))))", ""},
      // The hidden variable goes by the texts as written.
      {"mep(b)", -2, true, "BOOL", "", ""},
      {"y := mep(i)", 0, false, "old", notAllowed(5, "i", "mep")},
      {"mef()", 0, false, "old", countMessage(0, "mef")},
      {"mef(b, b)", 0, false, "old", countMessage(0, "mef")},
      {"Mef{b}", 0, false, "old", abnormal(0, "Mef")},
  });
}

TEST_F(Edge, StateOfEveryKindOfUnit) {
  const std::string inMemory = "(_mep(b',((u8*)(_m + 12))))";
  const std::string byReference = "(_mep(b',&P." + remember("MEP", "b", 12) + "/16))";
  for (const auto& [kind, type, text] : {std::tuple(1, vel::POUType::FunctionBlock, inMemory),
                                         {2, vel::POUType::Function, byReference},
                                         {2, vel::POUType::Program, byReference},
                                         {3, vel::POUType::FunctionBlock, byReference},
                                         {3, vel::POUType::Program, std::string()}}) {
    TestTree tree;
    Invocation* call = tree.parse("MEP(b)", "P", type);
    static_cast<POUDeclaration*>(vel::ASTNode::getPouAST(call))->kind = kind;
    EXPECT_EQ(find("MEP")->generate(&generator, call), text) << kind;
  }
  TestTree tree;
  vel::ASTNode* nameless = tree.parse("MEP(b)", nullptr, vel::POUType::FunctionBlock);
  EXPECT_EQ(find("MEP")->generate(&generator, nameless), "");
}

TEST_F(Edge, StaticCode) {
  EXPECT_EQ(find("MEP")->staticCode(),
            "inline static u8 _mep(u8 cond, u8* ps){u8 s = cond && !*ps; *ps = cond; return s;}");
  EXPECT_EQ(find("MEF")->staticCode(),
            "inline static u8 _mef(u8 cond, u8* ps){u8 s = !cond && *ps; *ps = cond; return s;}");
}

using MinMax = PluginTest;

// A rating of -2 makes every comparison fail, of 0 every one succeed; the calls tell
// which parameter was compared with what.
TEST_F(MinMax, Categories) {
  expectRows({
      {"MAX(r, r)", -2, true, "REAL", "", "MAX((r'), (r'))", ""},
      {"MAX(r, i)", 0, true, "REAL", "", "MAX((r'), (i'))", "REAL := INT i in P"},
      {"MAX(r, i)", -2, false, "REAL", cannotConvert(7, "INT", "REAL")},
      {"MAX(i, r)", 0, true, "REAL", "", "MAX((i'), (r'))", "REAL := INT i in P"},
      {"MAX(i, lr)", -2, false, "LREAL", cannotConvert(4, "INT", "LREAL")},
      {"MIN(r, lr)", -2, true, "LREAL", "", "MIN((r'), (lr'))", ""},
      {"MIN(lr, r)", -2, true, "LREAL", "", "MIN((lr'), (r'))", ""},
      {"MIN(by, by1)", -2, true, "BYTE", "", "MIN((by'), (by1'))", ""},
      {"MAX(ud, i)", 0, true, "LINT", "", "MAX((ud'), (i'))", "LINT := UDINT ud in P"},
      {"MAX(dw, i)", -2, false, "LINT", cannotConvert(4, "DWORD", "LINT")},
      {"MAX(di, us)", 0, true, "DINT", "", "MAX((di'), (us'))", "DINT := USINT us in P"},
      {"MAX(us, ui)", 0, true, "DINT", "", "MAX((us'), (ui'))", "DINT := UINT ui in P"},
      {"MAX(ui, di)", 0, true, "DINT", "", "MAX((ui'), (di'))", "DINT := UINT ui in P"},
      {"MAX(i, ui)", 0, true, "DINT", "", "MAX((i'), (ui'))", "DINT := UINT ui in P"},
      {"MAX(ui, i)", 0, true, "DINT", "", "MAX((ui'), (i'))", "DINT := UINT ui in P"},
      {"MAX(ui, i)", -2, false, "DINT", cannotConvert(4, "UINT", "DINT")},
      {"MAX(b, si)", 0, true, "BOOL", "", "MAX((b'), (si'))", "SINT := BOOL b in P"},
      {"MAX(b, si)", -2, false, "BOOL", cannotConvert(4, "BOOL", "SINT")},
      {"MAX(b, us)", 0, true, "INT", "", "MAX((b'), (us'))",
       "USINT := BOOL b in P\nINT := USINT us in P"},
      {"MAX(di, t)", 0, true, "DINT", "", "MAX((di'), (t'))", "DINT := TIME t in P"},
      {"MAX(ud, t)", 0, true, "LINT", "", "MAX((ud'), (t'))",
       "LINT := UDINT ud in P\nUDINT := TIME t in P"},
      {"MAX(t, t)", 0, true, "TIME", "", "MAX((t'), (t'))", "TIME := TIME t in P"},
      {"MAX(t, s)", -2, false, "TIME", cannotConvert(7, "STRING", "TIME")},
      {"MAX(q, i)", 0, true, "INT", "", "MAX((q'), (i'))", "INT := INVALID q in P"},
      {"MAX(u, i)", 0, false, "INVALID", ""},
      {"MIN(i, u)", 0, false, "INVALID", ""},
      {"min(i)", 0, false, "old", countMessage(0, "min")},
      {"MAX(i, i, i)", 0, false, "old", countMessage(0, "MAX")},
  });
}

TEST_F(MinMax, AssignmentDecidesForEqualTypes) {
  expectRows({
      {"di := MAX(i, i1)", 0, true, "DINT", "", "MAX((i'), (i1'))", "DINT := INT i in P"},
      {"si := MAX(i, i1)", -2, false, "SINT", cannotConvert(10, "INT", "SINT")},
      {"by := MAX(i, i1)", -2, false, "USINT", cannotConvert(10, "INT", "BYTE")},
      {"r := MAX(lr, lr)", -1, true, "REAL", loss(9, "LREAL", "REAL"), "MAX((lr'), (lr'))"},
      {"di := MAX(i, si)", 0, true, "INT", "", "MAX((i'), (si'))", "INT := SINT si in P"},
      {"si := MAX(u, u)", 0, false, "INVALID", "", "", ""},
      // Without a target there is no type to compare with.
      {" := MAX(i, i1)", 0, true, "INVALID", "", "MAX((i'), (i1'))", "INVALID := INT i in P"},
  });
  host.complaints = {"di"};
  expectRow({"di := MAX(i, si)", 0, true, "INT", "@0 E F0002 di in P", "MAX((i'), (si'))"});
}

TEST_F(MinMax, StaticCode) {
  EXPECT_EQ(find("MIN")->staticCode(), "#define MIN(x, y) ((x) < (y) ? (x) : (y))");
  EXPECT_EQ(find("MAX")->staticCode(), "#define MAX(x, y) ((x) > (y) ? (x) : (y))");
}

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

using Selection = PluginTest;

TEST_F(Selection, Sel) {
  expectRows({
      {"SEL(b, by, s)", -2, true, "BYTE", "", "SEL((b'), (by'), (s'))", ""},
      {"sel(TRUE, 5, r)", -2, true, "SINT", "", "SEL((TRUE'), (5'), (r'))", ""},
      {"SEL(b + b, i + 1, i)", 0, true, "old", "", "SEL((b + b'), (i + 1'), (i'))"},
      {"SEL(b, f(x), i)", 0, true, "old", "", "SEL((b'), (f(x)'), (i'))"},
      {"SEL(b, by, )", 0, true, "BYTE", "", ""},
      // The one text that is not translated.
      {"SEL(1, x, y)", 0, false, "old", message(0, "E C0032", "'1' expect 'BOOL' type;")},
      {"SEL(i, x, y)", 0, false, "old", message(0, "E C0032", "'i' expect 'BOOL' type;")},
      {"SEL(b(1), x, y)", 0, false, "old", message(0, "E C0032", "'b(1)' expect 'BOOL' type;")},
      {"sel(b, x)", 0, false, "old", countMessage(0, "sel")},
      {"SEL(b, x, y, z)", 0, false, "old", countMessage(0, "SEL")},
      {"y := Sel", 0, false, "old", countMessage(5, "Sel")},
      {"Sel{b, x, y}", 0, false, "old", notAllowed(0, "b, x, y", "Sel")},
  });
}

TEST_F(Selection, Limit) {
  expectRows({
      {"y := limit(0, by, 100)", 0, true, "USINT", "", "LIMIT((0'), (by'), (100'))",
       "USINT := SINT SINT in P\nUSINT := USINT USINT in P\nUSINT := SINT SINT in P"},
      {"LIMIT(0, i, 1.5)", 0, true, "INT", "", "LIMIT((0'), (i'), (1.5'))",
       "REAL := SINT SINT in P\nREAL := INT INT in P\nREAL := REAL REAL in P"},
      {"LIMIT(lr, i, r)", 0, true, "INT", "", "LIMIT((lr'), (i'), (r'))",
       "LREAL := LREAL LREAL in P\nLREAL := INT INT in P\nLREAL := REAL REAL in P"},
      {"LIMIT(i, lr, r)", 0, true, "LREAL", "", "LIMIT((i'), (lr'), (r'))",
       "LREAL := INT INT in P\nLREAL := LREAL LREAL in P\nLREAL := REAL REAL in P"},
      {"LIMIT(r, i, i)", 0, true, "INT", "", "LIMIT((r'), (i'), (i'))",
       "REAL := REAL REAL in P\nREAL := INT INT in P\nREAL := INT INT in P"},
      {"LIMIT(s, i, di)", -2, true, "INT",
       cannotConvert(6, "STRING", "INT") + "\n" + cannotConvert(9, "INT", "INT") + "\n" +
           cannotConvert(12, "DINT", "INT"),
       "LIMIT((s'), (i'), (di'))"},
      {"limit(0, 1)", 0, false, "old", countMessage(0, "limit")},
      {"limit(0, 1, )", 0, false, "old", countMessage(0, "limit")},
      {"LIMIT{0, 1, 2}", 0, false, "old", notAllowed(0, "0, 1, 2", "LIMIT")},
  });
}

TEST_F(Selection, NothingIsWrittenForNoParameters) {
  TestTree tree;
  EXPECT_EQ(find("LIMIT")->generate(&generator, tree.parse("limit()")), "LIMIT()");
}

TEST_F(Selection, HostMessagesInOrder) {
  host.complaints = {"u", "x", "z"};
  expectRow({"LIMIT(u, x, z)", -2, true, "INVALID",
             "@9 E F0002 x in P\n@6 E F0002 u in P\n@12 E F0002 z in P\n" +
                 cannotConvert(6, "INVALID", "INVALID") + "\n" +
                 cannotConvert(9, "INVALID", "INVALID") + "\n" +
                 cannotConvert(12, "INVALID", "INVALID"),
             "LIMIT((u'), (x'), (z'))"});
}

TEST_F(Selection, StaticCode) {
  EXPECT_EQ(find("SEL")->staticCode(), "#define SEL(g, in0, in1) ((g) ? (in1) : (in0))");
  EXPECT_EQ(find("LIMIT")->staticCode(),
            "#define LIMIT(mn, in, mx) (mn <= mx) ? ((((in) < (mn)) ? (mn) : ((in) > (mx)) ? (mx) "
            ": (in))) : mx");
}

using Shift = PluginTest;

TEST_F(Shift, Calls) {
  expectRows({
      {"SHL(by, 3)", -2, true, "USINT", "", "((u8)(SHL((by'), (3'))))", ""},
      {"i := shr(li, us)", -2, true, "LINT", "", "((i64)(SHR((li'), (us'))))", ""},
      {"shr(r, 1)", 0, false, "old", notInteger("E C0032", "shr", "r")},
      {"SHL(i, b)", 0, false, "INT", notInteger("E C0032", "SHL", "b")},
      // Without a type there is no cast.
      {"SHL(q, 1)", 0, false, "old", notInteger("E C0032", "SHL", "q"), "SHL((q'), (1'))"},
      {"shl(i)", 0, false, "old", countMessage(0, "shl")},
      {"SHR(i, 1, 2)", 0, false, "old", countMessage(0, "SHR")},
      {"shl{i, 1}", 0, false, "old", notAllowed(0, "i, 1", "shl")},
  });
}

TEST_F(Shift, StaticCode) {
  EXPECT_EQ(find("SHL")->staticCode(), "#define SHL(x, s) ((s) < 0 ? 0 : ((x) << (s)))");
  EXPECT_EQ(find("SHR")->staticCode(), "#define SHR(x, s) ((s) < 0 ? 0 : ((x) >> (s)))");
}

TEST_F(Shift, RotateCalls) {
  expectRows({
      {"ROL(si, 1)", -2, true, "SINT", "", "ROL(si', 1', SINT_t, USINT_t)", ""},
      {"rol(i, n1 + 1)", -2, false, "INT", notInteger("E C0131", "rol", "n1 + 1")},
      {"ror(i, us)", -2, true, "INT", "", "ROR(i', us', INT_t, UINT_t)", ""},
      {"ROR(di, 1)", -2, true, "DINT", "", "ROR(di', 1', DINT_t, UDINT_t)", ""},
      {"ROL(by, 1)", -2, true, "USINT", "", "ROL(by', 1', USINT_t, USINT_t)", ""},
      {"ROL(ud, 1)", -2, true, "UDINT", "", "ROL(ud', 1', UDINT_t, UDINT_t)", ""},
      {"r := ROL(ul, 1)", -1, true, "ULINT",
       message(9, "W C0196",
               "Implicit conversion from type 'ULINT' to type 'REAL' : may change the symbol"),
       "ROL(ul', 1', ULINT_t, ULINT_t)"},
      {"di := ROL(i, 1)", 0, true, "INT", "", "ROL(i', 1', INT_t, UINT_t)", "DINT := INT i in P"},
      {"si := ROL(w, 1)", -2, false, "UINT", cannotConvert(10, "WORD", "SINT")},
      {" := ROL(i, 1)", 0, true, "INT", "", "ROL(i', 1', INT_t, UINT_t)", "INVALID := INT i in P"},
      {"ROL(r, 1)", 0, false, "old", notInteger("E C0131", "ROL", "r"), "", ""},
      {"ROL(i, 1, 2)", 0, false, "old", countMessage(0, "ROL")},
      {"ror{i, 1}", 0, false, "old", notAllowed(0, "i, 1", "ror")},
  });
}

// The type comes from the record on the tree, not from a query.
TEST_F(Shift, RotateRecordedType) {
  TestTree tree;
  Invocation* call = tree.parse("ROL(f(x), 1)");
  for (const auto& [type, text] : {std::pair(vel::BasicDataType::None, ""),
                                   {vel::BasicDataType::UInt, "ROL(f(x)', 1', UINT_t, UINT_t)"},
                                   {vel::BasicDataType::Bool, ""}}) {
    static_cast<Invocation*>(call->leaf(1)->leaf(0))->setBasicType(type);
    EXPECT_EQ(find("ROL")->generate(&generator, call), text);
  }
  EXPECT_EQ(find("ROL")->generate(&generator, tree.parse("ROL(i)")), "");
}

TEST_F(Shift, RotateStaticCode) {
  const auto block = [](const std::string& left, const std::string& right) {
    return "uVarType lmvalue = uVarParam << " + left + ";\\\nuVarType rmvalue = uVarParam >> " +
           right + ";\\\nreturnValue = (varType)(lmvalue | rmvalue);\\\n}\\\n";
  };
  const std::string left = block("validMoveBit", "(totalBit- validMoveBit)");
  const std::string right = block("(totalBit- validMoveBit)", "validMoveBit");
  const std::string head =
      "(varParam, movebitParam, varType, uVarType) \\\n({\\\nuVarType uVarParam = varParam; \\\n"
      "u8 validMoveBit = 0; \\\nu8 totalBit = sizeof(varType) * 8; \\\nvarType returnValue = 0; "
      "\\\nif( movebitParam >= 0)\\\n{\\\nvalidMoveBit = (movebitParam % totalBit);\\\n";
  const std::string middle = "else\\\n{\\\nvalidMoveBit = -(movebitParam % totalBit);\\\n";
  const std::string tail = "returnValue;\\\n})\n";
  EXPECT_EQ(find("ROL")->staticCode(), "#define ROL" + head + left + middle + right + tail);
  EXPECT_EQ(find("ROR")->staticCode(), "#define ROR" + head + right + middle + left + tail);
}

}  // namespace
