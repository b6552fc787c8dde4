// A constant integer with its type.
#pragma once

#include <cstdint>
#include <optional>

#include "hostkit/elementary_types.h"
#include "refhost/kit.h"

namespace refhost {

using vel::BasicDataType;

class TypedConstant {
 public:
  // `bits` taken to the integer type `type`, as an assignment would take them.
  TypedConstant(std::uint64_t bits, BasicDataType type);
  // What literals that name no type amount to, with the type that it would have: it never wraps.
  static TypedConstant untyped(std::int64_t number, BasicDataType type);

  BasicDataType type() const { return type_; }
  bool isUntyped() const { return untyped_; }
  // Modulo 2 to the power of 64.
  std::uint64_t bits() const { return bits_; }
  bool isNegative() const { return type_ != BasicDataType::ULInt && bits_ >> 63 != 0; }
  bool fits(BasicDataType type) const;
  // Nothing for a value that only ULINT holds.
  std::optional<std::int64_t> asLInt() const;

 private:
  std::uint64_t bits_;
  BasicDataType type_;
  bool untyped_ = false;
};

}  // namespace refhost
