#include "support/plugin.h"

namespace {

using vel::BasicDataType;

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

}  // namespace
