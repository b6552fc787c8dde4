// What the reference host answers about nodes and elementary types.
#include "host/ast_node_helper.h"

#include <md5.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>

#include "host/text.h"
#include "refhost/messages.h"
#include "refhost/services/derived_types.h"
#include "refhost/services/services.h"
#include "refhost/services/types.h"
#include "refhost/syntax/literal.h"
#include "refhost/syntax/tree.h"

using refhost::BasicDataType;
using vel::ASTNode;
using vel::InternalInterface;
using vel::VELMessage;

namespace {

using refhost::Expr;

refhost::Services& services(InternalInterface* ii) { return *static_cast<refhost::Services*>(ii); }

Expr* asExpr(ASTNode* node) {
  const bool isExpr = node != nullptr && node->type() == vel::ASTType::Expression;
  return isExpr ? static_cast<Expr*>(node) : nullptr;
}

// The parameter of `invocation` that is written like this; null for none.
const Expr* parameterNamed(const ASTNode* invocation, std::string_view text) {
  const ASTNode* const list = invocation != nullptr ? invocation->leaf(1) : nullptr;
  for (int i = 0; list != nullptr && i < list->leavesCount(); ++i) {
    const Expr* const parameter = asExpr(list->leaf(i));
    if (parameter != nullptr && vel::TreeBuilder::source(*parameter) == text) return parameter;
  }
  return nullptr;
}

DataTypeInfo describe(const vel::SymbolDataType* type) {
  DataTypeInfo info;
  if (type != nullptr) {
    info.type = type->dataType();
    info.name = type->typeName();
  }
  return info;
}

}  // namespace

std::string AstNodeHelper::astText(ASTNode* node) {
  if (node == nullptr) return {};
  return std::string(vel::TreeBuilder::source(*node));
}

DataTypeInfo AstNodeHelper::dataType(InternalInterface*, ASTNode* expression, const std::string&,
                                     std::vector<VELMessage>&) {
  if (expression == nullptr) return {};
  if (Expr* const expr = asExpr(expression)) return describe(expr->dataType);
  if (refhost::kindOf(*expression) == refhost::NodeKind::Invocation) {
    return describe(static_cast<refhost::Call*>(expression)->dataType);
  }
  if (expression->type() == vel::ASTType::ConstantValue) {
    auto* const literal = static_cast<refhost::Literal*>(expression);
    return {literal->basicData().type(), literal->typeStr()};
  }
  return {};
}

vel::SymbolDataType* AstNodeHelper::dataType(InternalInterface* ii, BasicDataType type) {
  return services(ii).symbols.elementary(type);
}

std::string AstNodeHelper::basicDataTypeText(BasicDataType type) {
  const refhost::ElementaryType* const row = refhost::elementaryType(type);
  return row != nullptr && row->name != nullptr ? row->name : "INVALID";
}

std::string AstNodeHelper::basicDataToCTypeText(BasicDataType type) {
  const refhost::ElementaryType* const row = refhost::elementaryType(type);
  return row != nullptr ? row->cType : "";
}

int AstNodeHelper::getBasicDataTypeSize(InternalInterface*, BasicDataType type) {
  const refhost::ElementaryType* const row = refhost::elementaryType(type);
  return row != nullptr ? row->size : 0;
}

bool AstNodeHelper::isIntegerType(BasicDataType type) { return refhost::isInteger(type); }
bool AstNodeHelper::isUIntegerType(BasicDataType type) { return refhost::isUnsigned(type); }
bool AstNodeHelper::isFloatType(BasicDataType type) { return refhost::isFloat(type); }

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

int AstNodeHelper::compareDataType(InternalInterface*, BasicDataType target, BasicDataType source,
                                   const char* sourceText, const std::string&) {
  return refhost::rateConversion(target, source, sourceText);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the contract passes it by value
bool AstNodeHelper::stringCanConvertToBool(std::string text) {
  refhost::LiteralValue value;
  return refhost::parseLiteral(text, value) == refhost::LiteralError::None &&
         value.form == refhost::LiteralForm::Bool;
}

bool AstNodeHelper::isConstant(ASTNode* node) {
  if (node == nullptr) return false;
  if (node->type() == vel::ASTType::ConstantValue) return true;
  const Expr* const expr = asExpr(node);
  return expr != nullptr && expr->op() == Expression::Constant;
}

bool AstNodeHelper::isNumber(const std::string& text) {
  refhost::LiteralValue value;
  return refhost::parseLiteral(text, value) == refhost::LiteralError::None &&
         (value.form == refhost::LiteralForm::Integer || value.form == refhost::LiteralForm::Real);
}

bool AstNodeHelper::isDirectAddressAst(InternalInterface*, ASTNode* node) {
  if (node == nullptr) return false;
  const std::string_view text = vel::TreeBuilder::source(*node);
  return !text.empty() && text.front() == '%';
}

bool AstNodeHelper::checkDirectAddressAst(InternalInterface* ii, ASTNode* node, const std::string&,
                                          std::vector<VELMessage>& messages) {
  if (node == nullptr) return false;
  vel::HeapAddress address;
  const std::string_view text = vel::TreeBuilder::source(*node);
  if (services(ii).memory.parse(text, address)) return true;
  refhost::report(messages, node->pos(), refhost::message::kBadAddress, {text});
  return false;
}

bool AstNodeHelper::isBitAccessAst(InternalInterface*, ASTNode* node, const std::string&,
                                   const std::string&, int& bit, std::vector<VELMessage>&) {
  const Expr* const expr = asExpr(node);
  if (expr == nullptr || expr->access != Expr::Access::Bit) return false;
  bit = expr->bitAccessOffset();
  return true;
}

bool AstNodeHelper::checkBitAccessAst(InternalInterface* ii, ASTNode* node, const std::string& text,
                                      const std::string& pouName,
                                      std::vector<VELMessage>& messages) {
  int bit = 0;
  if (!isBitAccessAst(ii, node, text, pouName, bit, messages)) return false;
  const DataTypeInfo base = dataType(ii, node->leaf(0), pouName, messages);
  if (refhost::isInteger(base.type) && bit < 8 * getBasicDataTypeSize(ii, base.type)) return true;
  refhost::report(messages, node->pos(), refhost::message::kBitOutOfRange,
                  {std::to_string(bit), base.name});
  return false;
}

bool AstNodeHelper::checkAstWritable(InternalInterface*, ASTNode* node, const std::string& text,
                                     const std::string&, std::vector<VELMessage>& messages, bool,
                                     bool) {
  const Expr* const place = parameterNamed(node, text);
  if (place == nullptr || refhost::isWritable(*place)) return true;
  refhost::report(messages, node != nullptr ? node->pos() : vel::TextLocation(),
                  refhost::message::kNotWritable, {text});
  return false;
}

std::string AstNodeHelper::opExpTextToMd5HexText(const std::string& op,
                                                 const std::string& expression) {
  const std::string text = op + "(" + expression + ")";
  std::array<char, MD5_DIGEST_STRING_LENGTH> hex{};
  MD5Data(reinterpret_cast<const std::uint8_t*>(text.data()), text.size(), hex.data());
  return hex.data();
}

std::string AstNodeHelper::stringFormat(unsigned int, const char* format, ...) {
  std::va_list args;
  va_start(args, format);
  std::va_list again;
  va_copy(again, args);
  const int length = std::vsnprintf(nullptr, 0, format, args);
  va_end(args);
  std::string text(static_cast<std::size_t>(std::max(length, 0)), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, again);
  va_end(again);
  return text;
}

std::vector<std::string> stringSplit(const std::string& text, const std::string& separators) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text.find_first_of(separators, start);
    parts.push_back(text.substr(start, end - start));
    if (end == std::string::npos) return parts;
    start = end + 1;
  }
}

std::string stringToUpper(const std::string& text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), refhost::fold);
  return upper;
}
