// AstNodeHelper: answers what needs no compiler, and passes the rest to Answers.
#include <string_view>

#include "host/ast_node_helper.h"
#include "host/declaration.h"
#include "hostkit/elementary_types.h"
#include "hostkit/literal.h"
#include "hostkit/services.h"
#include "hostkit/strict.h"
#include "hostkit/tree_builder.h"

using vel::ASTNode;
using vel::BasicDataType;
using vel::InternalInterface;
using vel::VELMessage;

namespace {

hostkit::Answers& answersOf(InternalInterface* ii) {
  return static_cast<hostkit::Services*>(ii)->answers;
}

const Expression* asExpression(const ASTNode* node) {
  const bool isExpression = node != nullptr && node->type() == vel::ASTType::Expression;
  return isExpression ? static_cast<const Expression*>(node) : nullptr;
}

}  // namespace

std::string AstNodeHelper::astText(ASTNode* node) {
  hostkit::require(node != nullptr);
  return node != nullptr ? std::string(vel::TreeBuilder::source(*node)) : std::string();
}

DataTypeInfo AstNodeHelper::dataType(InternalInterface* ii, ASTNode* expression,
                                     const std::string& pouName,
                                     std::vector<VELMessage>& messages) {
  if (expression == nullptr) return {};
  return answersOf(ii).typeOf(*expression, pouName, messages);
}

vel::SymbolDataType* AstNodeHelper::dataType(InternalInterface* ii, BasicDataType type) {
  const hostkit::ElementaryType* const row = hostkit::elementaryType(type);
  if (row == nullptr || row->name == nullptr) return nullptr;
  return dynamic_cast<vel::SymbolDataType*>(
      answersOf(ii).find(row->name, "", vel::Symbol::DataType));
}

std::string AstNodeHelper::basicDataTypeText(BasicDataType type) {
  // No program can name a type like these.
  if (type == BasicDataType::Enumeration) return "an enumeration";
  if (type == BasicDataType::Structure) return "a structure";
  if (type == BasicDataType::Derived) return "an array";
  if (type == BasicDataType::FunctionBlock) return "a function block";
  if (type == BasicDataType::Pointer) return "a pointer";
  const hostkit::ElementaryType* const row = hostkit::elementaryType(type);
  return row != nullptr && row->name != nullptr ? row->name : "INVALID";
}

std::string AstNodeHelper::basicDataToCTypeText(BasicDataType type) { return hostkit::cType(type); }

int AstNodeHelper::getBasicDataTypeSize(InternalInterface* /*ii*/, BasicDataType type) {
  const hostkit::ElementaryType* const row = hostkit::elementaryType(type);
  return row != nullptr ? row->size : 0;
}

bool AstNodeHelper::isIntegerType(BasicDataType type) { return hostkit::isInteger(type); }
bool AstNodeHelper::isUIntegerType(BasicDataType type) { return hostkit::isUnsigned(type); }
bool AstNodeHelper::isFloatType(BasicDataType type) { return hostkit::isFloat(type); }

BasicDataType AstNodeHelper::tranIntegerBasicType(BasicDataType type) {
  switch (type) {
    case BasicDataType::USInt:
      return BasicDataType::Int;
    case BasicDataType::UInt:
      return BasicDataType::DInt;
    case BasicDataType::UDInt:
    case BasicDataType::ULInt:
      return BasicDataType::LInt;
    default:
      return type;
  }
}

int AstNodeHelper::compareDataType(InternalInterface* ii, BasicDataType target,
                                   BasicDataType source, const char* sourceText,
                                   const std::string& pouName) {
  return answersOf(ii).rate(target, source, sourceText, pouName);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the contract passes it by value
bool AstNodeHelper::stringCanConvertToBool(std::string text) {
  hostkit::LiteralValue value;
  return hostkit::parseLiteral(text, value) == hostkit::LiteralError::None &&
         value.form == hostkit::LiteralForm::Bool;
}

bool AstNodeHelper::isConstant(ASTNode* node) {
  if (node == nullptr) return false;
  if (node->type() == vel::ASTType::ConstantValue) return true;
  const Expression* const expression = asExpression(node);
  return expression != nullptr && expression->op() == Expression::Constant;
}

bool AstNodeHelper::isNumber(const std::string& text) {
  hostkit::LiteralValue value;
  return hostkit::parseLiteral(text, value) == hostkit::LiteralError::None &&
         (value.form == hostkit::LiteralForm::Integer || value.form == hostkit::LiteralForm::Real);
}

bool AstNodeHelper::isDirectAddressAst(InternalInterface* /*ii*/, ASTNode* node) {
  return node != nullptr && vel::TreeBuilder::source(*node).substr(0, 1) == "%";
}

bool AstNodeHelper::checkDirectAddressAst(InternalInterface* ii, ASTNode* node,
                                          const std::string& /*pouName*/,
                                          std::vector<VELMessage>& /*messages*/) {
  vel::HeapAddress address;
  return isDirectAddressAst(ii, node) && answersOf(ii).parseAddress(astText(node), address);
}

bool AstNodeHelper::isBitAccessAst(InternalInterface* /*ii*/, ASTNode* node,
                                   const std::string& /*text*/, const std::string& /*pouName*/,
                                   int& bit, std::vector<VELMessage>& /*messages*/) {
  const Expression* const expression = asExpression(node);
  if (expression == nullptr || expression->bitAccessOffset() < 0) return false;
  bit = expression->bitAccessOffset();
  return true;
}

bool AstNodeHelper::checkBitAccessAst(InternalInterface* ii, ASTNode* node, const std::string& text,
                                      const std::string& pouName,
                                      std::vector<VELMessage>& messages) {
  int bit = 0;
  if (!isBitAccessAst(ii, node, text, pouName, bit, messages)) return false;
  if (node->leavesCount() == 0) return false;
  const BasicDataType base = dataType(ii, node->leaf(0), pouName, messages).type;
  return isIntegerType(base) && bit < 8 * getBasicDataTypeSize(ii, base);
}

bool AstNodeHelper::checkAstWritable(InternalInterface* ii, ASTNode* node, const std::string& text,
                                     const std::string& pouName, std::vector<VELMessage>& messages,
                                     bool flag1, bool flag2) {
  hostkit::require(node != nullptr && !flag1 && !flag2);
  return node != nullptr && answersOf(ii).isWritable(*node, text, pouName, messages);
}

vel::SymbolDataType* VarDeclaration::astSpec2SymbolDataType(InternalInterface* ii,
                                                            vel::VarContainer* scope,
                                                            ASTNode* typeSpec, bool* ok) {
  vel::SymbolDataType* const type =
      scope != nullptr && typeSpec != nullptr ? answersOf(ii).resolve(*typeSpec, *scope) : nullptr;
  if (ok != nullptr) *ok = type != nullptr;
  return type;
}
