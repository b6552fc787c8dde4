#include "operators/convert/typed_conversion.h"

#include <utility>

#include "core/emission.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/symbol.h"
#include "host/text.h"
#include "operators/convert/conversion_check.h"
#include "operators/convert/conversion_name.h"

namespace vel {
namespace {

// The name of the argument's type, which is the source type where the operator's name gives none.
std::string argumentTypeName(Generator* gen, ASTNode* invocation, ASTNode* argument) {
  DataTypeInfo info = typeForText(gen, invocation, argument);
  if (info.type == BasicDataType::Derived) return std::move(info.name);
  // Addresses are 32-bit numbers.
  if (info.type == BasicDataType::Pointer) info.type = BasicDataType::UDInt;
  return AstNodeHelper::basicDataTypeText(info.type);
}

}  // namespace

bool ConvertOperator::check(InternalInterface* ii, ASTNode* invocation,
                            std::vector<VELMessage>& messages, std::string& resultType,
                            const std::string& pouName) {
  if (isEmpty(invocation)) return false;
  ConversionCheck conversion(ii, invocation, messages);
  if (!conversion.hasArgument(ConversionCheck::kShape, pouName)) return false;

  const std::string& written = conversion.name();
  const ConversionEnds ends(written);
  BasicDataType namedType = BasicDataType::None;
  if (ends.namesSource) {
    const std::string source(ends.source);
    const SymbolDataType* symbol = findDataType(ii, source.c_str());
    if (symbol == nullptr) {
      report(ii, messages, message::kUnknownType, invocation->pos(), source);
      return false;
    }
    namedType = symbol->dataType();
  } else if (conversion.argumentType() != BasicDataType::None || written.size() < 3) {
    if (written.find("TO_") == std::string::npos) return false;
    resultType = afterTo(written);
    return true;
  }

  if (!conversion.argumentIs(namedType) && !conversion.argumentConverts(namedType)) {
    return conversion.mismatch(conversion.argumentText());
  }
  resultType = ends.target;
  return true;
}

std::string ConvertOperator::generate(Generator* gen, ASTNode* invocation) {
  const auto written = nameToken(invocation);
  ASTNode* list = argumentList(invocation);
  if (!written || list == nullptr) return {};

  const std::string upper = stringToUpper(*written);
  const ConversionName parts(upper);
  std::string sourceName;
  if (parts.isTyped()) {
    sourceName = parts.parts[0];
  } else if (parts.isGeneric() && list->leavesCount() > 0) {
    sourceName = argumentTypeName(gen, invocation, list->leaf(0));
  } else {
    return {};
  }
  const SymbolDataType* source = findDataType(gen->ii, sourceName.c_str());
  SymbolDataType* target = findDataType(gen->ii, parts.target().data());
  if (source == nullptr || target == nullptr) return {};

  std::string out = emptyCallText();
  if (isText(source->dataType()) || isText(target->dataType())) {
    out += upper;
    out += '(';
  } else {
    out += "((";
    out += clanApi(gen)->typeText(target);
    out += ')';
  }
  genArgs(gen, list, out);
  out += ')';
  return out;
}

std::string RealToIntegerOperator::staticCode(Generator* /*gen*/) {
  return "#define __real_to_integer(fvalue, type) \\\n"
         "({\\\n"
         "(fvalue >= 0) ? (type)(fvalue + 0.5) : (type)(fvalue - 0.5);\\\n"
         "\\\n"
         "})\n";
}

std::string RealToIntegerOperator::generate(Generator* gen, ASTNode* invocation) {
  const auto written = nameToken(invocation);
  ASTNode* list = argumentList(invocation);
  if (!written || list == nullptr) return {};

  // No need for capitals: the lookup of a type ignores letter case.
  const ConversionName parts(*written);
  if (!parts.isTyped() && !parts.isGeneric()) return {};
  SymbolDataType* target = findDataType(gen->ii, parts.target().data());
  if (target == nullptr) return {};

  std::string out = emptyCallText();
  out += "__real_to_integer(";
  genArgs(gen, list, out);
  out += ", ";
  out += clanApi(gen)->typeText(target);
  out += ')';
  return out;
}

std::string ToBoolOperator::generate(Generator* gen, ASTNode* invocation) {
  ASTNode* list = argumentList(invocation);
  if (list == nullptr) return {};

  std::string out = emptyCallText();
  out += "((";
  genArgs(gen, list, out);
  out += ")!=0)";
  return out;
}

}  // namespace vel
