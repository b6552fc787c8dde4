// What the host knows about nodes and elementary types. All operations are
// static; unless said otherwise a null node is accepted and has an empty text and
// no type.
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

  // The type of an expression in the unit named `pouName`. May append messages of
  // the host's own.
  static DataTypeInfo dataType(vel::InternalInterface* ii, vel::ASTNode* expression,
                               const std::string& pouName, std::vector<vel::VELMessage>& messages);
  // The symbol of an elementary type; null for a number that is none.
  static vel::SymbolDataType* dataType(vel::InternalInterface* ii, vel::BasicDataType type);

  // The IEC name ("INT"), "INVALID" for a number without one. The numbers that a
  // bit string shares give the unsigned integer's name.
  static std::string basicDataTypeText(vel::BasicDataType type);
  // The C type in generated code.
  static std::string basicDataToCTypeText(vel::BasicDataType type);
  // Size in bytes; 0 for a number without a fixed size.
  static int getBasicDataTypeSize(vel::InternalInterface* ii, vel::BasicDataType type);

  // Signed or unsigned integer, unsigned integer, REAL or LREAL. Bit strings count
  // as unsigned integers, whose numbers they share.
  static bool isIntegerType(vel::BasicDataType type);
  static bool isUIntegerType(vel::BasicDataType type);
  static bool isFloatType(vel::BasicDataType type);
  // The integer type that stands for a type: a signed one that holds the values of
  // an unsigned one where there is any.
  static vel::BasicDataType tranIntegerBasicType(vel::BasicDataType type);

  // May a value of `source` be given where `target` is wanted? 0 or more yes, -1
  // with a conversion to warn of, -2 no, less a constant out of range.
  // `sourceText` is the source's text, null when it does not matter.
  static int compareDataType(vel::InternalInterface* ii, vel::BasicDataType target,
                             vel::BasicDataType source, const char* sourceText,
                             const std::string& pouName);

  // The text is a BOOL literal.
  static bool stringCanConvertToBool(std::string text);
  static bool isConstant(vel::ASTNode* node);
  static bool isNumber(const std::string& text);

  // The node is a direct address, one that begins with a percent sign.
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
  // What `text` names may be written by the unit `pouName`; `node` gives the
  // position of messages. The flags are reserved; pass false.
  static bool checkAstWritable(vel::InternalInterface* ii, vel::ASTNode* node,
                               const std::string& text, const std::string& pouName,
                               std::vector<vel::VELMessage>& messages, bool flag1, bool flag2);

  // Hexadecimal MD5 digest of an operator's text and an expression's text: the name
  // of the hidden variable that such an invocation keeps.
  static std::string opExpTextToMd5HexText(const std::string& op, const std::string& expression);

  // printf-like; only "%s" with const char* arguments is used. `format` is already
  // translated.
  static std::string stringFormat(unsigned int code, const char* format, ...);
};
