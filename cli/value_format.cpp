#include "cli/value_format.h"

#include <fmt/format.h>

#include <cstdint>
#include <cstring>

#include "cli/string_literal.h"
#include "velrt/print.h"

namespace velc {

namespace {

using vel::BasicDataType;

template <typename T>
T load(std::string_view bytes) {
  T value{};
  std::memcpy(&value, bytes.data(), sizeof value);
  return value;
}

template <typename T>
std::string bitStringText(std::string_view bytes) {
  return fmt::format("16#{:X}", load<T>(bytes));
}

}  // namespace

std::string valueText(BasicDataType type, std::string_view typeName, std::string_view bytes) {
  char text[VEL_PRINTED_UNITS];
  switch (type) {
    case BasicDataType::Bool:
    case BasicDataType::BitAddress:
      return vel_print_bool(load<u8>(bytes), text);
    case BasicDataType::SInt:
      return vel_print_signed(load<i8>(bytes), text);
    case BasicDataType::Int:
      return vel_print_signed(load<i16>(bytes), text);
    case BasicDataType::DInt:
      return vel_print_signed(load<i32>(bytes), text);
    case BasicDataType::LInt:
      return vel_print_signed(load<i64>(bytes), text);
    case BasicDataType::USInt:
      if (typeName == "BYTE") return bitStringText<u8>(bytes);
      return vel_print_unsigned(load<u8>(bytes), text);
    case BasicDataType::UInt:
      if (typeName == "WORD") return bitStringText<u16>(bytes);
      return vel_print_unsigned(load<u16>(bytes), text);
    case BasicDataType::UDInt:
      if (typeName == "DWORD") return bitStringText<u32>(bytes);
      return vel_print_unsigned(load<u32>(bytes), text);
    case BasicDataType::ULInt:
      if (typeName == "LWORD") return bitStringText<u64>(bytes);
      return vel_print_unsigned(load<u64>(bytes), text);
    case BasicDataType::Pointer:
      return load<std::uintptr_t>(bytes) == 0 ? "NULL" : bitStringText<std::uintptr_t>(bytes);
    case BasicDataType::Real:
      return vel_print_real(load<f32>(bytes), text);
    case BasicDataType::LReal:
      return vel_print_lreal(load<f64>(bytes), text);
    case BasicDataType::Time:
      return vel_print_time(load<i32>(bytes), text);
    case BasicDataType::LTime:
      return vel_print_ltime(load<i64>(bytes), text);
    case BasicDataType::Date:
      return vel_print_date(load<u32>(bytes), text);
    case BasicDataType::TimeOfDay:
      return vel_print_tod(load<u32>(bytes), text);
    case BasicDataType::DateAndTime:
      return vel_print_dt(load<u32>(bytes), text);
    case BasicDataType::String:
      return stringLiteral(bytes);
    case BasicDataType::WString:
      return wideStringLiteral(bytes);
    default:
      return {};
  }
}

}  // namespace velc
