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

}  // namespace
