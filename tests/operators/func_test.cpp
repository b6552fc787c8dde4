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

class Sizeof : public PluginTest {
 protected:
  Sizeof() {
    host.declare("P", vel::POUType::Program, {});
    host.declare("Block", vel::POUType::FunctionBlock, {});
    host.declare("Fun", vel::POUType::Function, {});
    host.named["P:alias"] = std::make_unique<vel::SymbolTyped>("alias", type.get());
    host.addresses["%MX1.2"] = {address(1), 10, BasicDataType::BitAddress, {}};
    host.addresses["D10"] = {address(2), 20, BasicDataType::UInt, {}};
    host.addresses["%M?"] = {vel::HeapAddress(), 0, BasicDataType::None, {}};
  }
  static vel::HeapAddress address(std::uint32_t area) {
    vel::HeapAddress made;
    made.area = area;
    made.unitSize = made.position = 1;
    return made;
  }

  std::unique_ptr<vel::SymbolDataType> type =
      std::make_unique<vel::SymbolDataType>("Alias", BasicDataType::DInt);
};

std::string undefined(const std::string& text) {
  return message(0, "E C0046", "Identifier '" + text + "' is not defined;");
}

TEST_F(Sizeof, Calls) {
  expectRows({
      {"SIZEOF(by)", 0, true, "UDINT", "", "sizeof(BYTE_t)", ""},
      // Parameters behind the first are looked at only where they are written.
      {"sizeof(by, u, )", 0, true, "UDINT", "", "sizeof(BYTE_t)", ""},
      {"SIZEOF(5, )", 0, true, "UDINT", "", "", ""},
      {"SIZEOF(by, u)", 0, true, "UDINT", "", "sizeof(BYTE_t)", ""},
      {"SIZEOF(i.3)", 0, true, "UDINT", "", "sizeof(i16)", ""},
      {"SIZEOF(dint)", 0, true, "UDINT", "", "sizeof(DINT_t)", ""},
      {"SIZEOF(alias)", 0, true, "UDINT", "", "sizeof(Alias_t)", ""},
      {"SIZEOF(Block)", 0, true, "UDINT", "", "sizeof(Block_t)", ""},
      {"SIZEOF(5)", 0, true, "UDINT", "", "sizeof((5'))", ""},
      {"SIZEOF(5, i)", 0, true, "UDINT", "", "sizeof((5'), (i'))", ""},
      {"SIZEOF(LINT#5)", 0, true, "UDINT", "", "sizeof(LINT_t)", ""},
      {"SIZEOF(=LINT#5)", 0, true, "UDINT", "", "sizeof(LINT_t)", ""},
      {"SIZEOF(=5)", 0, true, "UDINT", "", "sizeof((5'))", ""},
      {"SIZEOF(%MX1.2)", 0, true, "UDINT", "", "sizeof(BOOL_t)", ""},
      {"SIZEOF(D10)", 0, true, "UDINT", "", "sizeof(UINT_t)", ""},
      {"SIZEOF[INT]", 0, true, "UDINT", "", "sizeof(INT_t)", "spec INT in P"},
      {"SIZEOF[u]", 0, true, "UDINT", "", "sizeof((u'))", "spec u in P"},
      {"SIZEOF(nothing)", 0, false, "INVALID", undefined("nothing")},
      {"SIZEOF(%M?)", 0, false, "INVALID", undefined("%M?")},
      {"sizeof{u, by}", 0, false, "INVALID", undefined("u")},
      {"SIZEOF(Fun)", 0, false, "INVALID", ""},
      {"y := sizeof", 0, false, "old", countMessage(5, "sizeof")},
      {"sizeof()", 0, false, "UDINT", countMessage(0, "sizeof")},
  });
}

TEST_F(Sizeof, OtherTrees) {
  const std::set<int> specifications = {14, 18, 20, 26, 29, 35, 37, 42};
  TestTree tree;
  std::vector<vel::VELMessage> messages;
  std::string resultType;
  for (int kind = 0; kind < 70; ++kind) {
    vel::ASTNode* call =
        tree.node(vel::ASTType{3}, {nullptr, tree.node(vel::ASTType{kind}, {nullptr})});
    EXPECT_EQ(find("SIZEOF")->check(&host, call, messages, resultType, "P"),
              specifications.count(kind) != 0);
  }
  EXPECT_EQ(find("SIZEOF")->generate(&generator, tree.parse("SIZEOF(i)", "")), "");
  EXPECT_EQ(find("SIZEOF")->generate(&generator, tree.parse("SIZEOF(i)", "Unknown")), "");
}

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
