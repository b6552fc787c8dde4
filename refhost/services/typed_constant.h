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
  // `bits` converted to the integer type `type` as in an assignment.
  TypedConstant(std::uint64_t bits, BasicDataType type);
  // The value of untyped literals, which never wraps, and the type that the expression has.
  static TypedConstant untyped(std::int64_t number, BasicDataType type);

  BasicDataType type() const { return type_; }
  bool isUntyped() const { return untyped_; }
  // The value modulo 2 to the power of 64.
  std::uint64_t bits() const { return bits_; }
  bool isNegative() const { return type_ != BasicDataType::ULInt && bits_ >> 63 != 0; }
  bool fits(BasicDataType type) const;
  // Empty for a value that only ULINT holds.
  std::optional<std::int64_t> asLInt() const;

 private:
  std::uint64_t bits_;
  BasicDataType type_;
  bool untyped_ = false;
};

}  // namespace refhost
