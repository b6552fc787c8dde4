#include "operators/select/rotate.h"

#include <array>
#include <string_view>

#include "core/checks.h"
#include "core/emission.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/symbol.h"
#include "host/symbol_manager.h"
#include "host/text.h"
#include "operators/select/integer_parameters.h"

namespace vel {
namespace {

constexpr InvocationShape kTwoParameters{2, 2};

// The types that can be rotated, with their names and those of the unsigned types of equal width.
struct Rotatable {
  BasicDataType type;
  const char* symbol;
  const char* unsignedSymbol;
};
constexpr std::array<Rotatable, 8> kRotatable = {{
    {BasicDataType::SInt, "sint", "usint"},
    {BasicDataType::Int, "int", "uint"},
    {BasicDataType::DInt, "dint", "udint"},
    {BasicDataType::LInt, "lint", "ulint"},
    {BasicDataType::USInt, "usint", "usint"},
    {BasicDataType::UInt, "uint", "uint"},
    {BasicDataType::UDInt, "udint", "udint"},
    {BasicDataType::ULInt, "ulint", "ulint"},
}};

SymbolDataType* findType(Generator* gen, const char* name) {
  return dynamic_cast<SymbolDataType*>(gen->ii->symbolManager()->symbol(name, "", Symbol::All));
}

// Macros, because the preprocessor joins their pieces so that each rotation is one literal.
#define BLOCK_LEFT                                                \
  "uVarType lmvalue = uVarParam << validMoveBit;\\\n"             \
  "uVarType rmvalue = uVarParam >> (totalBit- validMoveBit);\\\n" \
  "returnValue = (varType)(lmvalue | rmvalue);\\\n"               \
  "}\\\n"
#define BLOCK_RIGHT                                               \
  "uVarType lmvalue = uVarParam << (totalBit- validMoveBit);\\\n" \
  "uVarType rmvalue = uVarParam >> validMoveBit;\\\n"             \
  "returnValue = (varType)(lmvalue | rmvalue);\\\n"               \
  "}\\\n"
// A GNU C statement expression: a block whose value is its last expression.
#define ROTATION(forward, backward)                         \
  "(varParam, movebitParam, varType, uVarType) \\\n"        \
  "({\\\n"                                                  \
  "uVarType uVarParam = varParam; \\\n"                     \
  "u8 validMoveBit = 0; \\\n"                               \
  "u8 totalBit = sizeof(varType) * 8; \\\n"                 \
  "varType returnValue = 0; \\\n"                           \
  "if( movebitParam >= 0)\\\n"                              \
  "{\\\n"                                                   \
  "validMoveBit = (movebitParam % totalBit);\\\n" forward   \
  "else\\\n"                                                \
  "{\\\n"                                                   \
  "validMoveBit = -(movebitParam % totalBit);\\\n" backward \
  "returnValue;\\\n"                                        \
  "})\n"
constexpr std::string_view kRotateLeft = ROTATION(BLOCK_LEFT, BLOCK_RIGHT);
constexpr std::string_view kRotateRight = ROTATION(BLOCK_RIGHT, BLOCK_LEFT);
#undef BLOCK_LEFT
#undef BLOCK_RIGHT
#undef ROTATION

std::string rotationMacro(std::string_view name, std::string_view rotation) {
  constexpr std::string_view kDefine = "#define ";
  std::string out;
  out.reserve(kDefine.size() + name.size() + rotation.size());
  out += kDefine;
  out += name;
  out += rotation;
  return out;
}

}  // namespace

bool RotateOperator::check(InternalInterface* ii, ASTNode* invocation,
                           std::vector<VELMessage>& messages, std::string& resultType,
                           const std::string& pouName) {
  const ASTNode* list = checkShape(ii, invocation, kTwoParameters, messages);
  if (list == nullptr) return false;

  const std::string scope = effectivePouName(invocation, pouName);
  const auto rotated =
      checkShiftOperands(ii, invocation, *list, message::kNotInteger, scope, messages, resultType);
  if (!rotated) return false;
  if (!isAssigned(*invocation)) return true;

  const BasicDataType target =
      AstNodeHelper::dataType(ii, invocation->parent()->leaf(0), scope, messages).type;
  const std::string targetText = AstNodeHelper::basicDataTypeText(target);
  return checkAssignType(ii, list->leaf(0), targetText, target,
                         AstNodeHelper::astText(list->leaf(0)), *rotated, scope, messages);
}

std::string RotateOperator::generate(Generator* gen, ASTNode* invocation) {
  const auto written = nameToken(invocation);
  ASTNode* list = argumentList(invocation);
  if (!written || list == nullptr || list->leavesCount() != 2) return {};

  const BasicDataType rotated = recordedType(list->leaf(0), BasicDataType::None);
  for (const Rotatable& row : kRotatable) {
    if (row.type != rotated) continue;
    SymbolDataType* type = findType(gen, row.symbol);
    SymbolDataType* unsignedType = findType(gen, row.unsignedSymbol);
    if (type == nullptr || unsignedType == nullptr) return {};

    GenClanAPI* api = clanApi(gen);
    std::string out = emptyCallText();
    out += stringToUpper(*written);
    out += '(';
    out += api->expressionText(list->leaf(0));
    out += ", ";
    out += api->expressionText(list->leaf(1));
    out += ", ";
    out += api->typeText(type);
    out += ", ";
    out += api->typeText(unsignedType);
    out += ')';
    return out;
  }
  return {};
}

std::string ROLOperator::staticCode(Generator* /*gen*/) { return rotationMacro(name, kRotateLeft); }

std::string ROROperator::staticCode(Generator* /*gen*/) {
  return rotationMacro(name, kRotateRight);
}

}  // namespace vel
