#include "support/plugin.h"

namespace {

using Edge = PluginTest;

TEST_F(Edge, Calls) {
  host.place("P:MEP|b", 12);
  host.place("P:mef|b + 1", 4000000000);
  host.place("P:MEP|TRUE", 0);
  host.place("P:MEP|yes", 1);
  host.place("P:mep|yes", 2);
  const CallRow rows[] = {
      {"MEP(b)", -2, true, "BOOL", "", "(_mep(b',((u8*)(_m + 12))))", ""},
      {"mef(b + 1)", -2, true, "BOOL", "", "(_mef(b + 1',((u8*)(_m + 4000000000))))", ""},
      {"MEP(TRUE)", -2, true, "BOOL", "", "(_mep(TRUE',((u8*)(_m + 0))))", ""},
      {"MEP(yes)", -2, true, "BOOL", "", "(_mep(yes',((u8*)(_m + 1))))", ""},
      {"mep(yes)", -2, true, "BOOL", "", "(_mep(yes',((u8*)(_m + 2))))", ""},
      // The hidden variable goes by the texts as written.
      {"mep(b)", -2, true, "BOOL", "", ""},
      {"y := mep(i)", 0, false, "old", notAllowed(5, "i", "mep")},
      {"mef()", 0, false, "old", countMessage(0, "mef")},
      {"mef(b, b)", 0, false, "old", countMessage(0, "mef")},
      {"Mef{b}", 0, false, "old", abnormal(0, "Mef")},
  };
  for (const CallRow& row : rows) expectRow(row);
}

TEST_F(Edge, StateOfEveryKindOfUnit) {
  const std::string inMemory = "(_mep(b',((u8*)(_m + 12))))";
  const std::string byReference = "(_mep(b',&P.MEP|b/16))";
  host.place("P:MEP|b", 12);
  for (const auto& [kind, type, text] : {std::tuple(1, vel::POUType::FunctionBlock, inMemory),
                                         {2, vel::POUType::Function, byReference},
                                         {2, vel::POUType::Program, byReference},
                                         {3, vel::POUType::FunctionBlock, byReference},
                                         {3, vel::POUType::Program, std::string()}}) {
    vel::TreeBuilder tree;
    Invocation* call = tree.parse("MEP(b)", "P", type);
    static_cast<POUDeclaration*>(vel::ASTNode::getPouAST(call))->kind = kind;
    EXPECT_EQ(find("MEP")->generate(&generator, call), text) << kind;
  }
}

TEST_F(Edge, StaticCode) {
  EXPECT_EQ(find("MEP")->staticCode(),
            "inline static u8 _mep(u8 cond, u8* ps){u8 s = cond && !*ps; *ps = cond; return s;}");
  EXPECT_EQ(find("MEF")->staticCode(),
            "inline static u8 _mef(u8 cond, u8* ps){u8 s = !cond && *ps; *ps = cond; return s;}");
}

}  // namespace
