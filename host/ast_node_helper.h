// Queries about nodes and elementary types that the host answers. All operations are static.
// The only one to which the plugin may pass a null node is `dataType`. The plugin does not call
// the operations marked "for the host".
#pragma once

#include <string>
#include <vector>

#include "host/ast.h"
#include "host/basic_data_type.h"
#include "host/export.h"
#include "host/message.h"

namespace vel {
class InternalInterface;
class SymbolDataType;
}  // namespace vel

class VEL_HOST_API AstNodeHelper {
 public:
  // Source text of a node.
  static std::string astText(vel::ASTNode* node);

  // The type of an expression in the unit named `pouName`: None for a null node, BOOL for a bit
  // of device memory. The host may append messages of its own.
  static DataTypeInfo dataType(vel::InternalInterface* ii, vel::ASTNode* expression,
                               const std::string& pouName, std::vector<vel::VELMessage>& messages);
  // The symbol of an elementary type; null for a number without one.
  static vel::SymbolDataType* dataType(vel::InternalInterface* ii, vel::BasicDataType type);

  // The IEC name in capitals ("INT"). For a number that a bit string and an unsigned integer
  // share, it is the name of the integer. For a number without a type, such as 0, the host
  // chooses the string, which then appears in messages and result types.
  static std::string basicDataTypeText(vel::BasicDataType type);
  // The C type in generated code.
  static std::string basicDataToCTypeText(vel::BasicDataType type);
  // Size in bytes, by which MIN and MAX decide which of two types is the larger.
  static int getBasicDataTypeSize(vel::InternalInterface* ii, vel::BasicDataType type);

  // Signed or unsigned integer, unsigned integer, REAL or LREAL. A bit string is an unsigned
  // integer here, because the two share a number.
  static bool isIntegerType(vel::BasicDataType type);
  static bool isUIntegerType(vel::BasicDataType type);
  static bool isFloatType(vel::BasicDataType type);
  // The integer type to which MIN and MAX promote an unsigned operand of type `type` when the
  // types of their operands differ. Best is a signed type that holds all values of `type`.
  static vel::BasicDataType tranIntegerBasicType(vel::BasicDataType type);

  // Rates the assignment of a value of type `source` to a variable of type `target`: 0 or more
  // allowed, -1 allowed with a conversion to warn of, -2 not allowed, below -2 a constant out
  // of range. `sourceText` is the source text of the value, null where it does not matter.
  static int compareDataType(vel::InternalInterface* ii, vel::BasicDataType target,
                             vel::BasicDataType source, const char* sourceText,
                             const std::string& pouName);

  // True when `text` is a BOOL literal.
  static bool stringCanConvertToBool(std::string text);
  // True when `node` is a literal.
  static bool isConstant(vel::ASTNode* node);
  // True when `text` is a number. For the host.
  static bool isNumber(const std::string& text);

  // True for a direct address, which begins with a percent sign. For the host, as are the next
  // three operations.
  static bool isDirectAddressAst(vel::InternalInterface* ii, vel::ASTNode* node);
  // Validates a direct address and appends the host's messages.
  static bool checkDirectAddressAst(vel::InternalInterface* ii, vel::ASTNode* node,
                                    const std::string& pouName,
                                    std::vector<vel::VELMessage>& messages);
  // True when the node, whose text is `text`, is a bit access (`x.3`). Sets `bit` to its number.
  static bool isBitAccessAst(vel::InternalInterface* ii, vel::ASTNode* node,
                             const std::string& text, const std::string& pouName, int& bit,
                             std::vector<vel::VELMessage>& messages);
  // True when the bit number is within the width of the operand.
  static bool checkBitAccessAst(vel::InternalInterface* ii, vel::ASTNode* node,
                                const std::string& text, const std::string& pouName,
                                std::vector<vel::VELMessage>& messages);
  // True when the unit `pouName` may write to the variable or address named `text`. Messages
  // are reported at `node`, the invocation. The flags are reserved; the plugin passes false.
  static bool checkAstWritable(vel::InternalInterface* ii, vel::ASTNode* node,
                               const std::string& text, const std::string& pouName,
                               std::vector<vel::VELMessage>& messages, bool flag1, bool flag2);

  // Hexadecimal MD5 digest of an operator's name and the source text of an expression. It names
  // the variable in which the host keeps the state of MEP and MEF.
  static std::string opExpTextToMd5HexText(const std::string& op, const std::string& expression);

  // Formats as printf does; only "%s" with const char* arguments is used. `format` is already
  // translated. `code` is the code of the message.
  static std::string stringFormat(unsigned int code, const char* format, ...);
};
