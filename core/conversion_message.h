// Chooses the message for an assignment that needs an implicit conversion or is not allowed.
#pragma once

#include "core/messages.h"
#include "host/ast_node_helper.h"
#include "host/basic_data_type.h"

namespace vel {

// The warning for an implicit conversion that is allowed.
inline const MessageFormat& conversionWarning(BasicDataType target, BasicDataType source) {
  const bool toUnsigned = AstNodeHelper::isUIntegerType(target);
  const bool fromUnsigned = AstNodeHelper::isUIntegerType(source);
  if (toUnsigned && !fromUnsigned) return message::kToUnsigned;
  if (!toUnsigned && fromUnsigned) return message::kToSigned;
  if (AstNodeHelper::isFloatType(target) && AstNodeHelper::isIntegerType(source)) {
    return message::kIntegerToFloat;
  }
  return message::kDoubtfulConversion;
}

// `rating` is a negative result of AstNodeHelper::compareDataType.
inline const MessageFormat& conversionMessage(int rating, BasicDataType target,
                                              BasicDataType source) {
  if (target == BasicDataType::Real && source == BasicDataType::LReal) {
    return message::kInformationLoss;
  }
  if (rating < -2) return message::kConstantTooLarge;
  return rating == -1 ? conversionWarning(target, source) : message::kCannotConvert;
}

}  // namespace vel
