// The trees of calls: leaves, parents, units, positions, source texts.
#include "host/text.h"
#include "hostkit/hosttest/duties.h"

namespace hosttest {
namespace {

using vel::ASTNode;
using vel::ASTType;

// The call that is the whole of a parameter; null when it is another expression.
Invocation* callIn(ASTNode* parameter) {
  auto* const expression = dynamic_cast<Expression*>(parameter);
  if (expression != nullptr && expression->leavesCount() == 1) parameter = expression->leaf(0);
  return dynamic_cast<Invocation*>(parameter);
}

void callsHaveTheirShape(HostUnderTest& host) {
  ASTNode* const invocation = host.parse({mainUnit()}, "y := Limit(0, i, 100)");
  ASSERT_NE(dynamic_cast<Invocation*>(invocation), nullptr)
      << "A call is an Invocation (host/expression.h): MUX records its type on it.";
  ASSERT_GE(invocation->leavesCount(), 2)
      << "A call has two leaves (host/ast.h), the operator's name and the parameter list. Every "
         "operator would refuse it with 0xC0040.";
  const auto* const name = dynamic_cast<vel::ASTText*>(invocation->leaf(0));
  ASSERT_NE(name, nullptr) << "Leaf 0 of a call is an ASTText (host/ast.h), the operator's name. "
                              "Most operators would give no C.";
  ASTNode* const list = invocation->leaf(1);
  ASSERT_NE(list, nullptr) << "Leaf 1 of a call is its parameter list (host/ast.h).";
  ASSERT_EQ(static_cast<int>(list->type()), static_cast<int>(ASTType::ParameterList))
      << "Leaf 1 of a call is of kind ASTType::ParameterList (host/ast.h). Every operator would "
         "refuse it with 0xC0131.";
  ASSERT_EQ(list->leavesCount(), 3)
      << "The leaves of a parameter list (host/ast.h) are the parameters. Every operator would "
         "count wrong and refuse with 0xC0040.";
  for (int i = 0; i < 3; ++i) {
    ASSERT_NE(list->leaf(i), nullptr) << "ASTNode::leaf (host/ast.h) owes parameter " << i;
    EXPECT_EQ(list->leaf(i)->parent(), list) << "ASTNode::parent (host/ast.h) of parameter " << i;
  }
  EXPECT_EQ(list->parent(), invocation) << "ASTNode::parent (host/ast.h) of the parameter list";
}

void assignmentsLeadToTheirTarget(HostUnderTest& host) {
  const Call call(host, "y := LIMIT(0, i, 100)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  ASTNode* const assignment = call.invocation()->parent();
  const bool hasTarget = assignment != nullptr && assignment->leavesCount() > 1;
  EXPECT_EQ(hasTarget ? toLower(AstNodeHelper::astText(assignment->leaf(0))) : "no target", "y")
      << "ASTNode::parent (host/ast.h) of a call that is the right side of an assignment owes a "
         "node of several leaves, the first of which is the target. MOVE, MIN, MAX, ROL and ROR "
         "would not check that their result fits it.";
}

void callsWithinHaveNoNeighbours(HostUnderTest& host) {
  const Call statement(host, "IZSET(%QX0.0, %QX0.7)");
  if (!statement.isUsable()) GTEST_SKIP() << Call::why();
  const ASTNode* const around = statement.invocation()->parent();
  constexpr const char* kOwed =
      "ASTNode::parent (host/ast.h) of a call that is not the right side of an assignment owes "
      "null or a node of one leaf, for instance an Expression around the call. MOVE, MIN, MAX, "
      "ROL and ROR take the first leaf of a parent with several for the target of an assignment.";
  EXPECT_LT(around != nullptr ? around->leavesCount() : 0, 2) << "A statement: " << kOwed;

  const Call call(host, "y := LIMIT(0, ABS(i), 100)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  const Invocation* const within = callIn(call.parameter(1));
  ASSERT_NE(within, nullptr) << "A call among parameters is an Invocation (host/expression.h), or "
                                "an Expression of which it is the only leaf.";
  ASSERT_NE(within->parent(), nullptr) << kOwed;
  EXPECT_EQ(within->parent()->leavesCount(), 1) << "A call among parameters: " << kOwed;
}

void unitsAreFoundFromTheirCalls(HostUnderTest& host) {
  const Unit block{"Block", vel::POUType::FunctionBlock, {{"i", "INT"}}};
  const Call call(host, {block, mainUnit()}, "MOVE(ABS(i))");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  for (ASTNode* const node : {call.invocation(), call.parameter(0)}) {
    const auto* const unit = dynamic_cast<POUDeclaration*>(ASTNode::getPouAST(node));
    ASSERT_NE(unit, nullptr)
        << "ASTNode::getPouAST (host/ast.h) owes the POUDeclaration around a node. MEP, MEF and "
           "SIZEOF would give no C, and types would be asked for in no unit.";
    EXPECT_STREQ(unit->name(), "Block") << "POUDeclaration::name (host/declaration.h)";
    EXPECT_EQ(unit->type(), block.type) << "POUDeclaration::type (host/declaration.h)";
  }
}

void positionsAreThoseOfTheNodes(HostUnderTest& host) {
  const Call call(host, "y := LIMIT(0, i, 100)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  constexpr const char* kOwed =
      "ASTNode::pos (host/ast.h) owes a position of each node, in the order in which they are "
      "written. Messages would point at something else.";
  std::uint32_t before = call.invocation()->pos().offset();
  for (int i = 0; i < call.parameters(); ++i) {
    ASSERT_NE(call.parameter(i), nullptr) << "see CallsHaveTheirShape";
    const std::uint32_t at = call.parameter(i)->pos().offset();
    EXPECT_GT(at, before) << "Parameter " << i << ": " << kOwed;
    before = at;
  }
}

void textsAreAsWritten(HostUnderTest& host) {
  const Call call(host, "LiMit(Int#0, ABS( i ), I)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  constexpr const char* kOwed =
      "AstNodeHelper::astText (host/ast_node_helper.h) owes the source of a node as it is written. "
      "Names and addresses are looked up by it, messages show it, and MEP and MEF find their "
      "state by it.";
  EXPECT_EQ(AstNodeHelper::astText(call.invocation()->leaf(0)), "LiMit") << kOwed;
  const auto* const name = dynamic_cast<vel::ASTText*>(call.invocation()->leaf(0));
  EXPECT_STREQ(name != nullptr ? name->text() : "LiMit", "LiMit")
      << "ASTText::text (host/ast.h) owes the name as written too.";
  EXPECT_EQ(AstNodeHelper::astText(call.parameter(0)), "Int#0") << kOwed;
  EXPECT_EQ(AstNodeHelper::astText(call.parameter(1)), "ABS( i )") << kOwed;
  EXPECT_EQ(AstNodeHelper::astText(call.parameter(2)), "I") << kOwed;
}

void typeSpecificationsLeadToTheirTypes(HostUnderTest& host) {
  const Call call(host, "SIZEOF(STRING[20])");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  ASTNode* const operand = call.invocation()->leaf(1);
  if (operand->type() == ASTType::ParameterList) {
    GTEST_SKIP() << "the host gives types as names among parameters, not as specifications";
  }
  auto* const unit = dynamic_cast<vel::SymbolPOU*>(find(host, call.unit(), "", vel::Symbol::Pou));
  bool ok = false;
  const vel::SymbolDataType* const type =
      VarDeclaration::astSpec2SymbolDataType(&host.services(), unit, operand, &ok);
  constexpr const char* kOwed =
      "VarDeclaration::astSpec2SymbolDataType (host/declaration.h) owes the data type that a type "
      "specification stands for, and sets `ok`. SIZEOF of a type would give no size.";
  ASSERT_NE(type, nullptr) << kOwed;
  EXPECT_TRUE(ok) << kOwed;
  EXPECT_EQ(number(type->dataType()), number(vel::BasicDataType::String)) << kOwed;
}

}  // namespace

Duties treeDuties() {
  return {{"CallsHaveTheirShape", callsHaveTheirShape},
          {"AssignmentsLeadToTheirTarget", assignmentsLeadToTheirTarget},
          {"CallsWithinHaveNoNeighbours", callsWithinHaveNoNeighbours},
          {"UnitsAreFoundFromTheirCalls", unitsAreFoundFromTheirCalls},
          {"PositionsAreThoseOfTheNodes", positionsAreThoseOfTheNodes},
          {"TextsAreAsWritten", textsAreAsWritten},
          {"TypeSpecificationsLeadToTheirTypes", typeSpecificationsLeadToTheirTypes}};
}

}  // namespace hosttest
