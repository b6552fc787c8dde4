// The shape of the initial values of an array.
#pragma once

#include <cstddef>
#include <cstdint>

#include "refhost/services/derived_types.h"

namespace refhost {

// A list of initial values: of an array or, if it has several dimensions, of one of its rows. The
// items of a list are either all rows, each a list itself, or all elements, those of the remaining
// dimensions together.
class ArrayValues {
 public:
  // `list` is an ArrayValue, or a Repeat that stands for a list.
  ArrayValues(const ArrayType& arrayType, const Expr& list) : ArrayValues(arrayType, 0, list) {}
  ArrayValues row(const Expr& list) const { return {array, dimension + 1, list}; }

  // The number of items that the list can have.
  std::int64_t capacity() const;
  // The number of elements that an item stands for.
  std::int64_t step() const { return rows ? array.count(dimension + 1) : 1; }
  // The type of a row, for messages.
  ArrayType rowType() const;

  const ArrayType& array;
  const std::size_t dimension;  // the first one of the list
  const bool rows;

 private:
  ArrayValues(const ArrayType& arrayType, std::size_t first, const Expr& list);
};

}  // namespace refhost
