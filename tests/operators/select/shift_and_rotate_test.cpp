#include "support/plugin.h"

namespace {

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
