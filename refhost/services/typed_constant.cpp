#include "refhost/services/typed_constant.h"

#include <fmt/format.h>

#include "hostkit/literal.h"

namespace refhost {
namespace {

std::uint64_t wrapped(std::uint64_t bits, BasicDataType type) {
  const ElementaryType* const row = elementaryType(type);
  const int unused = 64 - 8 * (row != nullptr ? row->size : 8);
  const std::uint64_t shifted = bits << unused;
  return isSigned(type) ? static_cast<std::uint64_t>(static_cast<std::int64_t>(shifted) >> unused)
                        : shifted >> unused;
}

}  // namespace

TypedConstant::TypedConstant(std::uint64_t bits, BasicDataType type)
    : bits_(wrapped(bits, type)), type_(type) {}

TypedConstant TypedConstant::untyped(std::int64_t number, BasicDataType type) {
  TypedConstant result(static_cast<std::uint64_t>(number), type);
  result.untyped_ = true;
  return result;
}

Integer TypedConstant::value() const {
  return type_ == BasicDataType::ULInt ? static_cast<Integer>(bits_)
                                       : static_cast<Integer>(static_cast<std::int64_t>(bits_));
}

std::string textOf(Integer number) { return fmt::format("{}", number); }

bool fits(Integer number, BasicDataType type) {
  if (number >> 64 > 0) return false;
  const auto magnitude = static_cast<std::uint64_t>(number < 0 ? -number : number);
  return integerFits(number < 0, magnitude, type);
}

}  // namespace refhost
