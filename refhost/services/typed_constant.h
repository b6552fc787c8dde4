// Constant integers.
#pragma once

#include <cstdint>
#include <string>

#include "hostkit/elementary_types.h"
#include "refhost/kit.h"

namespace refhost {

using vel::BasicDataType;

// Every value of every integer type, with room for sums and products of two of them up to LINT.
__extension__ typedef __int128 Integer;  // NOLINT(modernize-use-using)

// In decimal.
std::string textOf(Integer number);
bool fits(Integer number, BasicDataType type);

// An integer with its type.
class TypedConstant {
 public:
  // `bits` converted to the integer type `type` as in an assignment.
  TypedConstant(std::uint64_t bits, BasicDataType type);
  // The value of untyped literals, which never wraps, and the type that the expression has.
  static TypedConstant untyped(std::int64_t number, BasicDataType type);

  BasicDataType type() const { return type_; }
  bool isUntyped() const { return untyped_; }
  Integer value() const;
  // The value modulo 2 to the power of 64.
  std::uint64_t bits() const { return bits_; }
  bool fits(BasicDataType type) const { return refhost::fits(value(), type); }

 private:
  std::uint64_t bits_;
  BasicDataType type_;
  bool untyped_ = false;
};

}  // namespace refhost
