#include "support/plugin.h"

namespace {

using Rotate = PluginTest;

TEST_F(Rotate, Calls) {
  const CallRow rows[] = {
      {"ROL(si, 1)", -2, true, "SINT", "", "ROL(si', 1', SINT_t, USINT_t)", ""},
      {"rol(i, n1 + 1)", -2, false, "INT", notInteger("E C0131", "rol", "n1 + 1")},
      {"ror(i, us)", -2, true, "INT", "", "ROR(i', us', INT_t, UINT_t)", ""},
      {"ROR(di, 1)", -2, true, "DINT", "", "ROR(di', 1', DINT_t, UDINT_t)", ""},
      {"ROR(li, 1)", -2, true, "LINT", "", "ROR(li', 1', LINT_t, ULINT_t)", ""},
      {"ROL(by, 1)", -2, true, "USINT", "", "ROL(by', 1', USINT_t, USINT_t)", ""},
      {"ROL(ui, 1)", -2, true, "UINT", "", "ROL(ui', 1', UINT_t, UINT_t)", ""},
      {"ROL(ud, 1)", -2, true, "UDINT", "", "ROL(ud', 1', UDINT_t, UDINT_t)", ""},
      {"ROL(ul, 1)", -2, true, "ULINT", "", "ROL(ul', 1', ULINT_t, ULINT_t)", ""},
      {"di := ROL(i, 1)", 0, true, "INT", "", "ROL(i', 1', INT_t, UINT_t)", "DINT := INT i in P"},
      {"si := ROL(w, 1)", -2, false, "UINT", cannotConvert(10, "WORD", "SINT")},
      {"us := ROL(i, 1)", -1, true, "INT",
       message(10, "W C0195",
               "~Implicit conversion from type 'INT' to type 'USINT' : may change the symbol"),
       "ROL(i', 1', INT_t, UINT_t)"},
      {"ROL(r, 1)", 0, false, "old", notInteger("E C0131", "ROL", "r"), "", ""},
      {"rol(i)", 0, false, "old", countMessage(0, "rol")},
      {"ROL(i, 1, 2)", 0, false, "old", countMessage(0, "ROL")},
      {"ror{i, 1}", 0, false, "old", notAllowed(0, "i, 1", "ror")},
  };
  for (const CallRow& row : rows) expectRow(row);
}

// The type comes from the record on the tree, not from a query.
TEST_F(Rotate, RecordedType) {
  vel::TreeBuilder tree;
  Invocation* call = tree.parse("ROL(f(x), 1)");
  EXPECT_EQ(find("ROL")->generate(&generator, call), "");
  static_cast<Invocation*>(call->leaf(1)->leaf(0))->setBasicType(vel::BasicDataType::UInt);
  EXPECT_EQ(find("ROL")->generate(&generator, call), "ROL(f(x)', 1', UINT_t, UINT_t)");
  static_cast<Invocation*>(call->leaf(1)->leaf(0))->setBasicType(vel::BasicDataType::Bool);
  EXPECT_EQ(find("ROL")->generate(&generator, call), "");
  EXPECT_EQ(find("ROL")->generate(&generator, tree.parse("ROL(i)")), "");
}

TEST_F(Rotate, StaticCode) {
  const std::string left =
      "uVarType lmvalue = uVarParam << validMoveBit;\\\n"
      "uVarType rmvalue = uVarParam >> (totalBit- validMoveBit);\\\n"
      "returnValue = (varType)(lmvalue | rmvalue);\\\n}\\\n";
  const std::string right =
      "uVarType lmvalue = uVarParam << (totalBit- validMoveBit);\\\n"
      "uVarType rmvalue = uVarParam >> validMoveBit;\\\n"
      "returnValue = (varType)(lmvalue | rmvalue);\\\n}\\\n";
  const std::string head =
      "(varParam, movebitParam, varType, uVarType) \\\n({\\\nuVarType uVarParam = varParam; \\\n"
      "u8 validMoveBit = 0; \\\nu8 totalBit = sizeof(varType) * 8; \\\n"
      "varType returnValue = 0; \\\nif( movebitParam >= 0)\\\n{\\\n"
      "validMoveBit = (movebitParam % totalBit);\\\n";
  const std::string middle = "else\\\n{\\\nvalidMoveBit = -(movebitParam % totalBit);\\\n";
  const std::string tail = "returnValue;\\\n})\n";
  EXPECT_EQ(find("ROL")->staticCode(), "#define ROL" + head + left + middle + right + tail);
  EXPECT_EQ(find("ROR")->staticCode(), "#define ROR" + head + right + middle + left + tail);
}

}  // namespace
