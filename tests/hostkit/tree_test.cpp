#include "hostkit/tree.h"

#include <gtest/gtest.h>

#include <tuple>

#include "host/ast_node_helper.h"
#include "hostkit/kit_host.h"
#include "hostkit/operator_inputs.h"

// A host's own definition of an operation takes the place of the kit's.
bool AstNodeHelper::isNumber(const std::string& text) { return text == "many"; }

namespace {

using hostkit::Tree;
using vel::ASTNode;
using vel::BasicDataType;

Tree::Span at(const std::string& source, std::uint32_t offset) {
  return {source, vel::TextLocation(1, offset)};
}

TEST(Tree, NodesAreToldApart) {
  KitHost host;
  Tree tree;
  std::vector<vel::VELMessage> messages;
  Expression* const bit = tree.place(at("w.15", 4));
  auto* const word = dynamic_cast<Expression*>(bit->leaf(0));
  EXPECT_EQ(AstNodeHelper::astText(word), "w");
  EXPECT_EQ(word->pos().offset(), 4U);
  const auto isBit = [&] {
    return AstNodeHelper::checkBitAccessAst(&host, bit, "w.15", "Main", messages);
  };
  EXPECT_FALSE(isBit());
  word->setBasicType(BasicDataType::UInt);
  EXPECT_TRUE(isBit());
  vel::TreeBuilder::setBitAccessOffset(*bit, 16);
  EXPECT_FALSE(isBit());

  ASTNode* const five = tree.literal(at("5", 0), BasicDataType::SInt, "SINT", false);
  EXPECT_TRUE(AstNodeHelper::isConstant(five) && AstNodeHelper::isConstant(five->leaf(0)));
  EXPECT_FALSE(AstNodeHelper::isConstant(word) || AstNodeHelper::isConstant(nullptr));
  for (const char* const text :
       {"", ".3", "w.", "w.x", "w.3x", "w.-1", "w.256", "w.3.1", "3", "a b"}) {
    EXPECT_EQ(tree.place(at(text, 0)), nullptr) << text;
  }
  Expression* const address = tree.place(at("%MX1.9", 0));
  EXPECT_EQ(address->op(), Expression::Variable);
  EXPECT_TRUE(AstNodeHelper::isDirectAddressAst(&host, address));
  EXPECT_FALSE(AstNodeHelper::checkDirectAddressAst(&host, address, "Main", messages));
  EXPECT_TRUE(AstNodeHelper::stringCanConvertToBool("bool#1"));
  EXPECT_FALSE(AstNodeHelper::stringCanConvertToBool("1"));
  EXPECT_TRUE(AstNodeHelper::isNumber("many"));
}

TEST(Text, FormatsTakeArgumentsInOrder) {
  const std::string text(3000, 'x');
  EXPECT_EQ(
      AstNodeHelper::stringFormat(7, "%s: '%s' is 100 %% of '%s'%s;", "a", text.c_str(), "", "%s"),
      "a: '" + text + "' is 100 % of ''%s;");
  EXPECT_EQ(AstNodeHelper::stringFormat(7, ""), "");
}

TEST(Text, DigestNamesAConditionOfAnOperator) {
  EXPECT_EQ(AstNodeHelper::opExpTextToMd5HexText("MEP", "a AND b"),
            "abe60a2afc3e4d66158c88c37bab5964");
}

TEST(OperatorInputs, HaveAPosition) {
  const std::tuple<const char*, const char*, int> rows[] = {
      {"sel", "in1", 2},    {"SEL", "IN", -1},        {"LIMIT", "mx", 2},
      {"EXPT", "IN2", 1},   {"EXPT", "IN", -1},       {"SQRT", "in", 0},
      {"SQRT", "IN1", -1},  {"INT_TO_REAL", "IN", 0}, {"MUX", "k", 0},
      {"MUX", "IN0", 1},    {"mux", "in12", 13},      {"MUX", "IN", -1},
      {"MUX", "IN-1", -1},  {"MUX", "IN1x", -1},      {"MIN", "IN1", 0},
      {"max", "IN2", 1},    {"MIN", "IN0", -1},       {"IWRBIT", "OUT", 0},
      {"IRDBIT", "OUT", 1}, {"SHL", "N", 1},          {"MUX", "IN99999999999999999999", -1}};
  for (const auto& [name, formal, position] : rows) {
    EXPECT_EQ(hostkit::operatorInput(name, formal), position) << name << " " << formal;
  }
}

}  // namespace
