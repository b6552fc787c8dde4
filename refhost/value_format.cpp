#include "refhost/value_format.h"

#include <fmt/format.h>

#include "hostkit/elementary_types.h"
#include "refhost/string_literal.h"
#include "refhost/value_memory.h"
#include "velrt/print.h"

namespace refhost {

using vel::BasicDataType;

std::string valueText(BasicDataType type, std::string_view typeName, std::string_view bytes) {
  char text[VEL_PRINTED_UNITS];
  switch (type) {
    case BasicDataType::Bool:
    case BasicDataType::BitAddress:
      return vel_print_bool(bytes.front(), text);
    case BasicDataType::SInt:
    case BasicDataType::Int:
    case BasicDataType::DInt:
    case BasicDataType::LInt:
      return vel_print_signed(signedAt(bytes), text);
    case BasicDataType::USInt:
    case BasicDataType::UInt:
    case BasicDataType::UDInt:
    case BasicDataType::ULInt:
      if (hostkit::isBitStringName(typeName)) return fmt::format("16#{:X}", unsignedAt(bytes));
      return vel_print_unsigned(unsignedAt(bytes), text);
    case BasicDataType::Pointer:
      return unsignedAt(bytes) == 0 ? "NULL" : fmt::format("16#{:X}", unsignedAt(bytes));
    case BasicDataType::Real:
      return vel_print_real(static_cast<float>(realAt(bytes)), text);
    case BasicDataType::LReal:
      return vel_print_lreal(realAt(bytes), text);
    case BasicDataType::Time:
      return vel_print_time(static_cast<i32>(signedAt(bytes)), text);
    case BasicDataType::LTime:
      return vel_print_ltime(signedAt(bytes), text);
    case BasicDataType::Date:
      return vel_print_date(static_cast<u32>(unsignedAt(bytes)), text);
    case BasicDataType::TimeOfDay:
      return vel_print_tod(static_cast<u32>(unsignedAt(bytes)), text);
    case BasicDataType::DateAndTime:
      return vel_print_dt(static_cast<u32>(unsignedAt(bytes)), text);
    case BasicDataType::String:
      return stringLiteral(bytes);
    case BasicDataType::WString:
      return wideStringLiteral(bytes);
    default:
      return {};
  }
}

}  // namespace refhost
