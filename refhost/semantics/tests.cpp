#include "refhost/semantics/tests.h"

#include <map>
#include <memory>
#include <string>
#include <tuple>

#include "hostkit/folding.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/test_functions.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

bool isParameter(VarSection section) {
  return section == VarSection::Input || section == VarSection::Output ||
         section == VarSection::InOut;
}

}  // namespace

void Tests::declare() {
  std::map<std::uint32_t, const UnitSymbol*> setups;  // by file
  std::map<std::tuple<std::uint32_t, TestPart, std::string>, const ASTNode*> titles;
  // The variables of a SETUP are declared first, since the TESTs of the file name them.
  for (const bool setup : {true, false}) {
    for (Unit* const node : tree_.tests) {
      if ((node->testPart == TestPart::Setup) != setup) continue;
      const ASTNode& title = *node->leaf(Unit::kName);
      const std::uint32_t file = node->pos().file();
      const std::string text(TreeBuilder::source(title));
      if (text.empty()) continue;  // a syntax error, which has been reported
      LiteralValue value;
      if (node->testPart == TestPart::Test && parseLiteral(text, value) != LiteralError::None) {
        say(title, message::kBadLiteral, text);
        continue;
      }
      const std::string name = nameOf(*node);
      const auto [known, isNew] = titles.emplace(std::tuple(file, node->testPart, name), &title);
      if (!isNew) {
        sayRedeclared(title, name, known->second);
        continue;
      }
      refuseParameters(*node);
      auto unit = std::make_unique<UnitSymbol>(&services_, node);
      UnitSymbol& added = *unit;
      services_.symbols.add(std::move(unit));
      if (setup) {
        node->kind = kKindOfInstances;
        added.instantiated = true;
        setups[file] = &added;
      } else if (const auto found = setups.find(file); found != setups.end()) {
        added.outer = found->second;
      }
    }
  }
}

std::string Tests::nameOf(const Unit& node) {
  if (node.testPart != TestPart::Test) {
    return node.testPart == TestPart::Setup ? "SETUP" : "TEARDOWN";
  }
  LiteralValue title;
  parseLiteral(TreeBuilder::source(*node.leaf(Unit::kName)), title);
  return title.text;
}

void Tests::refuseParameters(const Unit& node) {
  const ASTNode& blocks = *node.leaf(Unit::kVarBlocks);
  for (int i = 0; i < blocks.leavesCount(); ++i) {
    const auto& block = static_cast<const VarBlock&>(*blocks.leaf(i));
    if (isParameter(block.section) && block.leavesCount() > 0) {
      say(*block.leaf(0)->leaf(VarDecl::kFirstName), message::kNotSupported,
          "Parameters of tests, which nothing calls, are");
    }
  }
}

void Tests::enterInstances() {
  if (tree_.tests.empty()) return;
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    if (unit->isTest()) parts_.configuredPlaces.placeInstances(*unit);
  }
  for (UnitSymbol* const unit : services_.symbols.units()) {
    if (unit->type() != vel::POUType::Program) continue;
    unit->instantiated = true;
    unit->node->kind = kKindOfInstances;
  }
}

vel::SymbolDataType* Tests::programType(std::string_view name) {
  UnitSymbol* const unit = isInTest() ? services_.symbols.unit(name) : nullptr;
  const bool program = unit != nullptr && unit->type() == vel::POUType::Program;
  return program ? unit->makeInstanceType() : nullptr;
}

bool Tests::sees(const VarSymbol& member) const { return isInTest() && member.role == Role::Local; }

void Tests::callFunction(Call& call) {
  const TestFunction& function = *call.testFunction();
  const ASTNode& name = *call.leaf(0);
  if (!isInTest()) {
    say(name, message::kOnlyInTests, TreeBuilder::source(name));
    return;
  }
  if (!takesOperands(call)) return;
  const std::size_t first = messages_.count();
  switch (function.kind) {
    case TestFunction::Kind::Comparison:
      analyseComparison(call);
      break;
    case TestFunction::Kind::Condition:
      analyseCondition(call);
      break;
    case TestFunction::Kind::Near:
      analyseNear(call);
      break;
    case TestFunction::Kind::Advance:
      analyseAdvance(call);
      break;
  }
  if (call.parameters()->leavesCount() > function.operands()) analyseText(call);
  call.accepted = !hasErrorFrom(first);
}

bool Tests::refusesMock(const Call& call) {
  const std::string name(TreeBuilder::source(*call.leaf(0)));
  if (!isInTest() || !isMockFunction(name)) return false;
  say(*call.leaf(0), message::kNotSupported, "Mocks (" + name + ") are");
  return true;
}

// Checks the number and the form of the operands.
bool Tests::takesOperands(const Call& call) {
  const TestFunction& function = *call.testFunction();
  const ASTNode* const list = call.parameters();
  if (list == nullptr) {
    say(*call.leaf(1), message::kNotAValue, TreeBuilder::source(*call.leaf(1)));
    return false;
  }
  for (int i = 0; i < list->leavesCount(); ++i) {
    if (kindOf(*list->leaf(i)) != NodeKind::Argument) continue;
    const ASTNode& formal = *list->leaf(i)->leaf(0);
    say(formal, message::kUnknownParameter, function.name, TreeBuilder::source(formal));
    return false;
  }
  const int most = function.operands() + (function.asserts() ? 1 : 0);
  if (list->leavesCount() < function.operands()) {
    say(call, message::kTooFewArguments, function.name);
    return false;
  }
  if (list->leavesCount() > most) {
    say(*list->leaf(most), message::kTooManyArguments, function.name);
    return false;
  }
  return true;
}

// Makes the comparison of an assertion, which is not analysed yet.
CommonType Tests::compare(Call& call, Expr& left, Expr& right) {
  call.operation = tree_.makeBinary(call.testFunction()->comparison, &left, &right);
  TreeBuilder::setSpan(*call.operation, call.pos(), TreeBuilder::source(call));
  return commonType(*call.operation);
}

// Arrays and structures are compared member by member, all other values as by the operator.
void Tests::analyseComparison(Call& call) {
  const TestFunction& function = *call.testFunction();
  ASTNode& list = *call.parameters();
  if (parts_.names.isOpen(*list.leaf(0))) {
    parts_.expressions.analyseLeaf(list, 0, parts_.expressions.analyseLeaf(list, 1).dataType);
  }
  Expr& left = parts_.expressions.analyseLeaf(list, 0);
  Expr& right = parts_.expressions.analyseLeaf(list, 1, left.dataType);
  if (left.dataType == nullptr || right.dataType == nullptr) return;
  const bool composite = isComposite(left.dataType) || isComposite(right.dataType);
  if (!composite && compare(call, left, right).kind != CommonType::Kind::Invalid) {
    parts_.expressions.analyse(*call.operation);
    return;
  }
  const bool equality =
      function.comparison == ExprKind::Equal || function.comparison == ExprKind::NotEqual;
  const bool sameType = composite && left.dataType == right.dataType;
  if (equality && sameType && isComparable(*left.dataType)) return;
  say(call, message::kOperandTypes, function.name, describe(left), describe(right));
}

// False if the type has parts without a value, which are instances and references.
bool Tests::isComparable(const Type& type) const {
  if (const auto* const array = dynamic_cast<const ArrayType*>(&type)) {
    return isComparable(*array->element);
  }
  const auto* const structure = dynamic_cast<const StructType*>(&type);
  if (structure == nullptr) return !isComposite(&type);
  for (const auto& member : structure->members()) {
    if (member->indirect || member->dataType() == nullptr) return false;
    if (!isComparable(*member->dataType())) return false;
  }
  return true;
}

void Tests::analyseCondition(Call& call) {
  const Expr& condition = parts_.expressions.analyseLeaf(
      *call.parameters(), 0, services_.symbols.elementary(BasicDataType::Bool));
  const BasicDataType type = typeOf(condition);
  if (type != BasicDataType::None && type != BasicDataType::Bool) {
    say(condition, message::kOperandType, call.testFunction()->name, describe(condition));
  }
}

// Numbers have a number for a tolerance, durations and points in time a duration.
void Tests::analyseNear(Call& call) {
  const TestFunction& function = *call.testFunction();
  ASTNode& list = *call.parameters();
  Expr& left = parts_.expressions.analyseLeaf(list, 0);
  Expr& right = parts_.expressions.analyseLeaf(list, 1, left.dataType);
  Expr& tolerance = parts_.expressions.analyseLeaf(list, 2, left.dataType);
  for (const Expr* const operand : {&left, &right, &tolerance}) {
    if (operand->dataType == nullptr) return;
    if (!isComposite(operand->dataType)) continue;
    say(*operand, message::kNotSupported,
        displayName(operand->dataType) + " in " + std::string(function.name) +
            ", which compares single values, is");
    return;
  }
  const CommonType common = compare(call, left, right);
  const bool numbers = common.kind == CommonType::Kind::Number;
  const bool times =
      common.kind == CommonType::Kind::Durations || common.kind == CommonType::Kind::Same;
  const BasicDataType type = typeOf(tolerance);
  if ((numbers && isNumber(type)) || (times && isDuration(type))) {
    parts_.expressions.analyse(*call.operation);
    return;
  }
  if (isText(type) && list.leavesCount() == function.operands()) {
    say(call, message::kTooFewArguments, function.name);
    return;
  }
  const Expr& other = numbers || times ? tolerance : right;
  say(call, message::kOperandTypes, function.name, describe(left), describe(other));
}

void Tests::analyseAdvance(Call& call) {
  const Expr& duration = parts_.expressions.analyseLeaf(*call.parameters(), 0);
  const BasicDataType type = typeOf(duration);
  if (type == BasicDataType::None || isDuration(type) || isInteger(type)) return;
  say(duration, message::kOperandType, call.testFunction()->name, describe(duration));
}

// The text that an assertion shows when it fails.
void Tests::analyseText(Call& call) {
  const Type* const wanted = services_.symbols.elementary(BasicDataType::String);
  const Expr& text =
      parts_.expressions.analyseLeaf(*call.parameters(), call.testFunction()->operands(), wanted);
  if (typeOf(text) != BasicDataType::String) {
    parts_.assignments.check(wanted, text.dataType, text);
  }
}

}  // namespace refhost
