#include "refhost/services/typed_constant.h"

#include "hostkit/literal.h"

namespace refhost {
namespace {

constexpr std::uint64_t kSign = std::uint64_t{1} << 63;

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

bool TypedConstant::fits(BasicDataType type) const {
  return integerFits(isNegative(), isNegative() ? 0 - bits_ : bits_, type);
}

std::optional<std::int64_t> TypedConstant::asLInt() const {
  if (!isNegative() && bits_ >= kSign) return {};
  return static_cast<std::int64_t>(bits_);
}

}  // namespace refhost
