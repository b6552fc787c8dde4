#include "core/checks.h"

#include <gtest/gtest.h>

#include "core/invocation.h"
#include "core/messages.h"
#include "support/test_host.h"
#include "support/test_tree.h"

using vel::BasicDataType;

namespace {

class Checks : public ::testing::Test {
 protected:
  std::string takeMessages() { return TestHost::describe(std::exchange(messages, {})); }

  TestHost host;
  TestTree tree;
  std::vector<vel::VELMessage> messages;
};

const std::string kCount =
    "@0 E C0040 Too many parameters, too few parameters, or no variables assigned to the IN_OUT "
    "in PRG 'Fun';";
const std::string kNotAList = "@0 E C0131 'a, b' are not allowed to be 'Fun' parameters;";

TEST_F(Checks, CountsDeclaredParameters) {
  constexpr int kIn = vel::SymbolVar::kInput;
  constexpr int kInOut = vel::SymbolVar::kInOut;
  struct Row {
    vel::POUType type;
    std::vector<int> kinds;  // -1 a parameter that is missing
    const char* source;
    int inputs;
    std::string expected;  // empty: accepted
  };
  const Row rows[] = {
      {vel::POUType::Function, {kIn, kInOut, 8, -1}, "Fun(a, b)", 2, ""},
      {vel::POUType::Function, {kIn, kInOut}, "Fun(a)", 2, kCount},
      {vel::POUType::Function, {kIn, kInOut}, "Fun(a, b, c)", 2, kCount},
      {vel::POUType::Function, {kIn, kInOut}, "Fun(a, )", 2, ""},
      {vel::POUType::Function, {kIn, kInOut}, "Fun{a, b}", 2, kNotAList},
      {vel::POUType::Function, {}, "Fun()", 0, ""},
      {vel::POUType::Function, {}, "Fun", 0, kCount},
      {vel::POUType::Function, {}, "Fun?", 0, kCount},
      {vel::POUType::FunctionBlock, {kIn, kInOut, kIn}, "Fun(a, b)", 2, ""},
      {vel::POUType::Operator, {kInOut}, "Fun(a)", 0, kCount},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.source);
    host.declare("FUN", row.type, row.kinds);
    EXPECT_EQ(vel::countInputs(&host, "Fun"), row.inputs);
    host.asked.clear();
    EXPECT_EQ(vel::checkParams(&host, tree.parse(row.source), messages), row.expected.empty());
    EXPECT_EQ(takeMessages(), row.expected);
    // The operator is looked up only for a list to count.
    const bool isCounted = std::string(row.source).find('(') != std::string::npos;
    EXPECT_EQ(host.asked[0], "symbols");
    EXPECT_EQ(TestHost::take(host.asked).find("find") != std::string::npos, isCounted);
  }
  EXPECT_EQ(vel::countInputs(&host, "unknown"), 0);
  EXPECT_TRUE(vel::checkParams(&host, tree.parse("unknown()"), messages));
  EXPECT_FALSE(vel::checkParams(&host, nullptr, messages));
  EXPECT_FALSE(vel::checkParams(&host, tree.node(vel::ASTType{3}, {}), messages));
  EXPECT_EQ(takeMessages(), "");
}

TEST_F(Checks, BitStringsKeepTheirNames) {
  EXPECT_EQ(vel::resolveTypeText(&host, "P", BasicDataType::USInt, "by"), "BYTE");
  EXPECT_EQ(vel::resolveTypeText(&host, "P", BasicDataType::USInt, "us"), "USINT");
  EXPECT_EQ(vel::resolveTypeText(&host, "P", BasicDataType::UInt, "word"), "word");
  EXPECT_EQ(vel::resolveTypeText(&host, "P", BasicDataType::UInt, "5"), "UINT");
  EXPECT_EQ(vel::resolveTypeText(&host, "P", BasicDataType::Pointer, "p"), "a pointer");
}

TEST_F(Checks, AssignedTypes) {
  struct Row {
    const char* target;  // a variable
    const char* source;
    int rating;
    bool accepted;
    std::string expected;
  };
  const std::string convert = "Implicit conversion from type ";
  const std::string sign = " : may change the symbol";
  const Row rows[] = {
      {"i", "di", 0, true, ""},
      {"i", "di", 3, true, ""},
      {"r", "lr", -1, true,
       "W C0197 " + convert + "'LREAL' to type 'REAL' : Possible loss of information;"},
      {"r", "lr", -7, true,
       "W C0197 " + convert + "'LREAL' to type 'REAL' : Possible loss of information;"},
      {"us", "i", -1, true, "W C0195 " + convert + "'INT' to type 'USINT'" + sign},
      {"w", "r", -1, true, "W C0195 " + convert + "'REAL' to type 'WORD'" + sign},
      {"i", "by", -1, true, "W C0196 " + convert + "'BYTE' to type 'INT'" + sign},
      {"r", "ul", -1, true, "W C0196 " + convert + "'ULINT' to type 'REAL'" + sign},
      {"r", "li", -1, true, "W C0197 " + convert + "'LINT' to type 'REAL'" + sign},
      {"i", "di", -1, false, "W C0032 'DINT' cannot convert to 'INT' type;"},
      {"us", "ui", -1, false, "W C0032 'UINT' cannot convert to 'USINT' type;"},
      {"r", "b", -1, false, "W C0032 'BOOL' cannot convert to 'REAL' type;"},
      {"lr", "r", -2, false, "E C0032 'REAL' cannot convert to 'LREAL' type;"},
      {"dw", "s", -2, false, "E C0032 'STRING' cannot convert to 'DWORD' type;"},
      {"si", "300", -3, false, "E C0001 The constant '300' is too large for data type 'INT';"},
      {"st", "us", 0, false, "E C0032 'us' cannot convert to 'st' type;"},
      {"en", "us", 0, false, "E C0032 'us' cannot convert to 'en' type;"},
      {"fb", "us", 0, false, "E C0032 'us' cannot convert to 'fb' type;"},
      {"st", "ST", 0, true, ""},
      {"st", "ST", -2, false, "E C0032 'INVALID' cannot convert to 'a structure' type;"},
  };
  vel::ASTNode* source = tree.node(vel::ASTType{9}, {}, "", 7);
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.target) + " := " + row.source);
    host.rating = row.rating;
    EXPECT_EQ(vel::checkAssignType(&host, source, row.target, TestHost::typeOf(row.target).type,
                                   row.source, TestHost::typeOf(row.source).type, "P", messages),
              row.accepted);
    EXPECT_EQ(takeMessages(), row.expected.empty() ? "" : "@7 " + row.expected);
  }
  EXPECT_EQ(host.asked[0] + "; " + host.asked[1] + "; " + host.asked[2],
            "find i 2 in P; find di 2 in P; INT := DINT di in P");
  host.rating = -2;
  EXPECT_FALSE(vel::checkAssignType(&host, nullptr, "i", BasicDataType::Int, "s",
                                    BasicDataType::String, "P", messages));
}

TEST_F(Checks, NameOfTheUnit) {
  EXPECT_EQ(vel::effectivePouName(tree.parse("F(a)", "Unit"), "given"), "Unit");
  EXPECT_EQ(vel::effectivePouName(tree.parse("F(a)", ""), "given"), "given");
  EXPECT_EQ(vel::effectivePouName(tree.parse("F(a)", nullptr), "given"), "given");
  vel::ASTNode* loose = tree.node(vel::ASTType{3}, {});
  EXPECT_EQ(vel::effectivePouName(loose, "given"), "given");
  EXPECT_EQ(vel::enclosingPouName(loose), "");
}

}  // namespace
