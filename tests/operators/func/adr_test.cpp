#include "support/plugin.h"

namespace {

using vel::BasicDataType;

class Adr : public PluginTest {
 protected:
  Adr() {
    word.area = bit.area = 1;
    word.unitSize = word.position = bit.unitSize = bit.position = 2;
    bit.bitIndex = 3;
    host.addresses["%MW10"] = {word, 20, BasicDataType::UInt, {}};
    host.addresses["M83"] = {bit, 83, BasicDataType::BitAddress, {}};
    host.addresses["i7"] = {bit, 83, BasicDataType::BitAddress, {}};
    host.addresses["d.5"] = {vel::HeapAddress(bit), 85, BasicDataType::BitAddress, {}};
    host.addresses["d.5"].address.position = 5;
    host.place("P:kept", 48);
    host.place("P:at", 0, word);
    host.place("P:flag", 83, bit);
  }

  vel::HeapAddress word;
  vel::HeapAddress bit;
};

TEST_F(Adr, Calls) {
  expectRows({
      {"ADR(i)", -2, true, "UDINT", "", "(&P.i/16)", ""},
      {"adr(st.x)", -2, true, "UDINT", "", "(&st.x')", ""},
      {"ADR(%MW10)", -2, true, "UDINT", "", "((u8*)(_m + 20))", ""},
      {"ADR(M83)", -2, true, "UDINT", "", "((u8*)(_m + 10))", ""},
      {"ADR(d.5)", -2, true, "UDINT", "", "((u8*)(_m + 10))", ""},
      // A variable hides a device of its name.
      {"ADR(i7)", -2, true, "UDINT", "", "(&P.i7/16)", ""},
      {"ADR(kept)", -2, true, "UDINT", "", "((u8*)(_m + 48))", ""},
      {"ADR(at)", -2, true, "UDINT", "", "((u8*)(_m + 0))", ""},
      {"ADR(flag)", -2, true, "UDINT", "", "((u8*)(_m + 10))", ""},
      {"ADR(u)", -2, true, "UDINT", "", ""},
      {"y := adr(5)", 0, false, "old", notAllowed(9, "5", "adr")},
      {"adr(i + 1)", 0, false, "old", notAllowed(4, "i + 1", "adr")},
      {"ADR(f(x))", 0, false, "old", notAllowed(4, "f(x)", "ADR")},
      {"ADR(i.3)", 0, false, "old", notAllowed(4, "i.3", "ADR")},
      {"adr(i, i)", 0, false, "old", countMessage(0, "adr")},
      {"adr{i}", 0, false, "old", notAllowed(0, "i", "adr")},
  });
}

// A bit access is a part of something.
TEST_F(Adr, BitNumbersOfVariablesMeanNothing) {
  TestTree tree;
  Invocation* call = tree.parse("ADR(i)");
  vel::TreeBuilder::setBitAccessOffset(*static_cast<Expression*>(call->leaf(1)->leaf(0)), 3);
  EXPECT_TRUE(check(*find("ADR"), call, "", "P").accepted);
}

// Only programs keep variables without an address in device memory.
TEST_F(Adr, OtherUnits) {
  TestTree tree;
  for (const auto& [source, text] : {std::pair("ADR(kept)", "(&P.kept/16)"),
                                     {"ADR(at)", "((u8*)(_m + 0))"},
                                     {"ADR(%MW10)", "((u8*)(_m + 20))"}}) {
    vel::ASTNode* call = tree.parse(source, "P", vel::POUType::FunctionBlock);
    EXPECT_EQ(find("ADR")->generate(&generator, call), text);
  }
}

}  // namespace
