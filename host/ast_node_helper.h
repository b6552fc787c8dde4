// What the host knows about nodes and elementary types. All operations are static. The
// plugin passes no null node but to `dataType`. Operations that it does not call are said to
// be the host's own.
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

  // The type of an expression in the unit named `pouName`; none for null, BOOL for a bit of
  // device memory. May append messages of the host's own.
  static DataTypeInfo dataType(vel::InternalInterface* ii, vel::ASTNode* expression,
                               const std::string& pouName, std::vector<vel::VELMessage>& messages);
  // The symbol of an elementary type; null for a number without one.
  static vel::SymbolDataType* dataType(vel::InternalInterface* ii, vel::BasicDataType type);

  // The IEC name in capitals ("INT"). The numbers that bit strings share give the
  // unsigned integer's name. A number without a name, such as 0, has a text of the host's
  // choice, which messages and result types then show.
  static std::string basicDataTypeText(vel::BasicDataType type);
  // The C type in generated code.
  static std::string basicDataToCTypeText(vel::BasicDataType type);
  // Size in bytes, by which MIN and MAX tell the larger of two types.
  static int getBasicDataTypeSize(vel::InternalInterface* ii, vel::BasicDataType type);

  // Signed or unsigned integer, unsigned integer, REAL or LREAL. Bit strings are unsigned
  // integers, since they share their numbers.
  static bool isIntegerType(vel::BasicDataType type);
  static bool isUIntegerType(vel::BasicDataType type);
  static bool isFloatType(vel::BasicDataType type);
  // The integer type that stands for a type when MIN and MAX compare numbers of different
  // types. The host's choice, best a signed type that holds the values of an unsigned one.
  static vel::BasicDataType tranIntegerBasicType(vel::BasicDataType type);

  // May a value of `source` be given where `target` is wanted? 0 or more yes, -1
  // with a conversion to warn of, -2 no, less a constant out of range.
  // `sourceText` is the source's text, null when it does not matter.
  static int compareDataType(vel::InternalInterface* ii, vel::BasicDataType target,
                             vel::BasicDataType source, const char* sourceText,
                             const std::string& pouName);

  // The text is a BOOL literal.
  static bool stringCanConvertToBool(std::string text);
  // The node is a literal.
  static bool isConstant(vel::ASTNode* node);
  // The text is a number. The host's own.
  static bool isNumber(const std::string& text);

  // The node is a direct address, one that begins with a percent sign. The host's own, as are
  // the three operations that follow.
  static bool isDirectAddressAst(vel::InternalInterface* ii, vel::ASTNode* node);
  // Validates a direct address and appends the host's messages.
  static bool checkDirectAddressAst(vel::InternalInterface* ii, vel::ASTNode* node,
                                    const std::string& pouName,
                                    std::vector<vel::VELMessage>& messages);
  // The node, whose text is `text`, is a bit access (`x.3`); its number goes to `bit`.
  static bool isBitAccessAst(vel::InternalInterface* ii, vel::ASTNode* node,
                             const std::string& text, const std::string& pouName, int& bit,
                             std::vector<vel::VELMessage>& messages);
  // The bit access is within the width of its operand.
  static bool checkBitAccessAst(vel::InternalInterface* ii, vel::ASTNode* node,
                                const std::string& text, const std::string& pouName,
                                std::vector<vel::VELMessage>& messages);
  // What `text` names may be written by the unit `pouName`; `node`, the invocation, gives
  // the position of messages. The flags are reserved; the plugin passes false.
  static bool checkAstWritable(vel::InternalInterface* ii, vel::ASTNode* node,
                               const std::string& text, const std::string& pouName,
                               std::vector<vel::VELMessage>& messages, bool flag1, bool flag2);

  // Hexadecimal MD5 digest of an operator's text and an expression's text: the name
  // of the variable in which the host keeps the state of MEP and MEF.
  static std::string opExpTextToMd5HexText(const std::string& op, const std::string& expression);

  // printf-like; only "%s" with const char* arguments is used. `format` is already
  // translated. `code` is the message's.
  static std::string stringFormat(unsigned int code, const char* format, ...);
};
