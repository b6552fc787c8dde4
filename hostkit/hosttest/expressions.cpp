// Kinds and types of expressions, literals, writable operands, and the state of edge operators.
#include "host/text.h"
#include "hostkit/hosttest/duties.h"

namespace hosttest {
namespace {

using vel::BasicDataType;

// The type recorded on a parameter; None when it is not an Expression.
BasicDataType recorded(const Call& call, int parameter) {
  const auto* const expression = dynamic_cast<Expression*>(call.parameter(parameter));
  return expression != nullptr ? expression->basicType() : BasicDataType::None;
}

void expressionsHaveTheirKinds(HostUnderTest& host) {
  const Call call(host, "MUX(0, i, w.3)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  const char* const owed[] = {
      "a literal is an Expression of Expression::Constant: SEL reads its type from the node",
      "a variable is an Expression of Expression::Variable: SEL, ADR and IRDBIT ask for it",
      "a bit of a variable is an Expression of Expression::Typed: IRDBIT would not write to it"};
  const Expression::Operator kinds[] = {Expression::Constant, Expression::Variable,
                                        Expression::Typed};
  for (int i = 0; i < 3; ++i) {
    const auto* const expression = dynamic_cast<Expression*>(call.parameter(i));
    ASSERT_NE(expression, nullptr) << "Expression::op (host/expression.h): " << owed[i];
    EXPECT_EQ(static_cast<int>(call.parameter(i)->type()),
              static_cast<int>(vel::ASTType::Expression))
        << "An Expression is of kind 63 (host/ast.h), ASTType::Expression.";
    EXPECT_EQ(expression->op(), kinds[i]) << "Expression::op (host/expression.h): " << owed[i];
  }
  EXPECT_EQ(dynamic_cast<Expression*>(call.parameter(2))->bitAccessOffset(), 3)
      << "Expression::bitAccessOffset (host/expression.h) owes the number of a bit access. ADR "
         "would take the address of a bit.";
}

void literalsAreConstants(HostUnderTest& host) {
  const Call call(host, "MUX(5, DINT#7, i)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(AstNodeHelper::isConstant(call.parameter(i)))
        << "AstNodeHelper::isConstant (host/ast_node_helper.h) owes true for a literal. SIZEOF "
           "would look it up as a name.";
    const bool hasLeaf = call.parameter(i)->leavesCount() > 0;
    auto* const literal =
        dynamic_cast<ConstantValue*>(hasLeaf ? call.parameter(i)->leaf(0) : call.parameter(i));
    ASSERT_NE(literal, nullptr) << "Leaf 0 of a literal is its ConstantValue (host/expression.h), "
                                   "which SIZEOF and MUX ask.";
    EXPECT_EQ(literal->isFixedType(), i == 1)
        << "ConstantValue::isFixedType (host/expression.h) tells DINT#7 from 5. SIZEOF would give "
           "a wrong size.";
    if (i == 0) continue;
    EXPECT_EQ(vel::stringToUpper(literal->typeStr()), "DINT")
        << "ConstantValue::typeStr (host/expression.h) owes the type's name. SIZEOF asks for it.";
    EXPECT_EQ(number(literal->basicData().type()), number(BasicDataType::DInt))
        << "ConstantValue::basicData (host/expression.h) owes the literal's type, for MUX.";
  }
  EXPECT_FALSE(AstNodeHelper::isConstant(call.parameter(2)))
      << "AstNodeHelper::isConstant (host/ast_node_helper.h) owes false for a variable. SIZEOF "
         "would give the size of its value's expression.";
}

void variablesHaveTheirTypes(HostUnderTest& host) {
  Unit unit{"Main", vel::POUType::Program, {}};
  for (const ElementaryType& type : elementaryTypes()) {
    unit.variables.push_back({"of" + std::string(type.name), type.name});
  }
  Faults wrong;
  for (const ElementaryType& type : elementaryTypes()) {
    Call call(host, {unit}, "MOVE(of" + std::string(type.name) + ")");
    if (!call.isUsable()) GTEST_SKIP() << Call::why();
    const DataTypeInfo info = call.typeOf(0);
    wrong.addIf(info.type != type.number || vel::stringToUpper(info.name) != type.name,
                std::string(type.name) + " is " + std::to_string(number(info.type)) + " \"" +
                    info.name + "\"");
    wrong.addIf(!call.messages.empty(), std::string(type.name) + " comes with a message");
  }
  EXPECT_EQ(wrong.text(), "")
      << "AstNodeHelper::dataType(ii, node, unit, messages) (host/ast_node_helper.h) owes the "
         "number and the name of a variable's type, and no message for a sound one. Every check "
         "begins with it.";
}

void literalsAndCallsHaveTheirTypes(HostUnderTest& host) {
  Call call(host, "MUX(i, REAL#1.5, TRUNC(r), MIN(i, j))");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  constexpr const char* kOwed =
      "AstNodeHelper::dataType(ii, node, unit, messages) (host/ast_node_helper.h) owes the type of "
      "a literal that names one, and of a call the type that its check has given it. Calls in "
      "calls would be refused.";
  EXPECT_EQ(number(call.typeOf(1).type), number(BasicDataType::Real)) << "REAL#1.5: " << kOwed;
  EXPECT_EQ(number(call.typeOf(2).type), number(BasicDataType::DInt)) << "TRUNC(r): " << kOwed;
  EXPECT_EQ(number(call.typeOf(3).type), number(BasicDataType::Int)) << "MIN(i, j): " << kOwed;
  EXPECT_TRUE(call.messages.empty()) << "No message for a sound expression: " << kOwed;
}

void literalsCarryTheirTypeBeforeCheck(HostUnderTest& host) {
  const Call call(host, "SEL(TRUE, DINT#7, i)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  constexpr const char* kOwed =
      "Expression::basicType (host/expression.h) of a literal owes its type before check runs. SEL "
      "asks nothing else of a literal: it would refuse TRUE, and have no type.";
  EXPECT_EQ(number(recorded(call, 0)), number(BasicDataType::Bool)) << "TRUE: " << kOwed;
  EXPECT_EQ(number(recorded(call, 1)), number(BasicDataType::DInt)) << "DINT#7: " << kOwed;
}

void typesAreRecordedBeforeGenerate(HostUnderTest& host) {
  constexpr const char* kOwed =
      "Expression::setBasicType (host/expression.h) is to be called by the host for every "
      "expression between check and generate. ROL and ROR would give no C, and ABS of a float "
      "the function for integers.";
  const struct {
    const char* statement;
    BasicDataType type;
  } rows[] = {{"y := ROL(i, 1)", BasicDataType::Int},
              {"y := ROL(MIN(i, j), 1)", BasicDataType::Int},
              {"r := ABS(r)", BasicDataType::Real}};
  for (const auto& row : rows) {
    Call call(host, row.statement);
    if (!call.isUsable()) GTEST_SKIP() << Call::why();
    if (!call.check()) GTEST_SKIP() << row.statement << " is refused; see EveryOperatorGivesC";
    call.accept();
    const auto* const within = dynamic_cast<Invocation*>(call.parameter(0));
    const BasicDataType type = within != nullptr ? within->basicType() : recorded(call, 0);
    EXPECT_EQ(number(type), number(row.type)) << row.statement << ": " << kOwed;
  }
}

void textsOfBoolAreKnown(HostUnderTest& /*host*/) {
  Faults wrong;
  for (const char* const text : {"TRUE", "FALSE", "true"}) {
    wrong.addIf(!AstNodeHelper::stringCanConvertToBool(text), text);
  }
  for (const char* const text : {"", "truth", "i", "2.5", "'TRUE'"}) {
    wrong.addIf(AstNodeHelper::stringCanConvertToBool(text), "\"" + std::string(text) + "\"");
  }
  EXPECT_EQ(wrong.text(), "")
      << "AstNodeHelper::stringCanConvertToBool (host/ast_node_helper.h) tells literals of BOOL. "
         "MEP, MEF and MUX take them where they have no type.";
}

void constantsAreNotWritten(HostUnderTest& host) {
  Unit unit = mainUnit();
  unit.variables.push_back({"fixed", "BOOL", Section::Constant});
  Call call(host, {unit}, "IRDBIT(%IX0.0, fixed)");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  const auto isWritable = [&](const char* text) {
    return AstNodeHelper::checkAstWritable(&host.services(), call.invocation(), text, "Main",
                                           call.messages, false, false);
  };
  constexpr const char* kOwed =
      "AstNodeHelper::checkAstWritable (host/ast_node_helper.h) owes true for a variable, without "
      "a "
      "message, and false for a constant, with one: IRDBIT adds none, and would be refused without "
      "a word.";
  EXPECT_TRUE(isWritable("b")) << kOwed;
  EXPECT_TRUE(call.messages.empty()) << kOwed;
  EXPECT_FALSE(isWritable("fixed")) << kOwed;
  EXPECT_FALSE(call.messages.empty()) << kOwed;
}

// The hidden variable of the edge detection `op(condition)` in the unit Main; null for none.
vel::SymbolVar* edgeState(HostUnderTest& host, const char* op, const char* condition) {
  const std::string name = AstNodeHelper::opExpTextToMd5HexText(op, condition);
  return dynamic_cast<vel::SymbolVar*>(find(host, name, "Main", vel::Symbol::Variable));
}

void edgeStatesAreFoundByTheirDigest(HostUnderTest& host) {
  Call call(host, "c := MEP(MEF( B ))");
  if (!call.isUsable()) GTEST_SKIP() << Call::why();
  if (!call.check()) GTEST_SKIP() << "MEP is refused; see EveryOperatorGivesC";
  call.accept();
  constexpr const char* kOwed =
      "SymbolManager::symbol(digest, unit, Symbol::Variable) (host/symbol_manager.h) owes a "
      "SymbolVar for each call of MEP and MEF. The host declares it, before generate, under "
      "AstNodeHelper::opExpTextToMd5HexText of name and parameter as written. MEP and MEF would "
      "give no C.";
  EXPECT_NE(edgeState(host, "MEP", "MEF( B )"), nullptr) << kOwed;
  EXPECT_NE(edgeState(host, "MEF", "B"), nullptr) << "A call among parameters: " << kOwed;
}

void edgeStatesHaveAPlace(HostUnderTest& host) {
  for (const vel::POUType type : {vel::POUType::Program, vel::POUType::FunctionBlock}) {
    Unit unit = mainUnit();
    unit.type = type;
    Call call(host, {unit}, "c := MEP(MEF(B))");
    if (!call.isUsable()) GTEST_SKIP() << Call::why();
    if (!call.check()) GTEST_SKIP() << "MEP is refused; see EveryOperatorGivesC";
    call.accept();
    vel::SymbolVar* const outer = edgeState(host, "MEP", "MEF(B)");
    vel::SymbolVar* const inner = edgeState(host, "MEF", "B");
    const auto* const declaration =
        dynamic_cast<POUDeclaration*>(vel::ASTNode::getPouAST(call.invocation()));
    if (outer == nullptr || inner == nullptr || declaration == nullptr) {
      GTEST_SKIP() << "see EdgeStatesAreFoundByTheirDigest and UnitsAreFoundFromTheirCalls";
    }
    EXPECT_TRUE(outer->dataType() != nullptr &&
                outer->dataType()->dataType() == vel::BasicDataType::Bool)
        << "SymbolVar::dataType (host/symbol.h) owes BOOL for the state of an edge detection, "
           "which "
           "the C of MEP and MEF takes for one byte.";
    if (declaration->kind == 1) {
      EXPECT_NE(outer->backendAddress().address, inner->backendAddress().address)
          << "SymbolMemUnit::backendAddress (host/symbol.h) owes a byte of device memory for the "
             "state of each edge detection, in units of POUDeclaration::kind 1. They would share "
             "what they remember.";
      continue;
    }
    EXPECT_TRUE(declaration->kind == 2 || type == vel::POUType::FunctionBlock)
        << "POUDeclaration::kind (host/declaration.h) owes 1 or 2 in a program. MEP and MEF would "
           "give no C.";
    const std::string text = host.generator().variableText(outer, 16, "Main");
    EXPECT_TRUE(!text.empty() && text != host.generator().variableText(inner, 16, "Main"))
        << "GenClanAPI::variableText (host/generator.h) owes the C lvalue of the state of each "
           "edge "
           "detection. They would share what they remember, or have no place for it.";
  }
}

}  // namespace

Duties expressionDuties() {
  return {{"ExpressionsHaveTheirKinds", expressionsHaveTheirKinds},
          {"LiteralsAreConstants", literalsAreConstants},
          {"VariablesHaveTheirTypes", variablesHaveTheirTypes},
          {"LiteralsAndCallsHaveTheirTypes", literalsAndCallsHaveTheirTypes},
          {"LiteralsCarryTheirTypeBeforeCheck", literalsCarryTheirTypeBeforeCheck},
          {"TypesAreRecordedBeforeGenerate", typesAreRecordedBeforeGenerate},
          {"TextsOfBoolAreKnown", textsOfBoolAreKnown},
          {"ConstantsAreNotWritten", constantsAreNotWritten},
          {"EdgeStatesAreFoundByTheirDigest", edgeStatesAreFoundByTheirDigest},
          {"EdgeStatesHaveAPlace", edgeStatesHaveAPlace}};
}

}  // namespace hosttest
