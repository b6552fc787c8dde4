#include "refhost/services/array_values.h"

#include <algorithm>
#include <vector>

namespace refhost {
namespace {

// The number of lists that are nested in each other in the value of an element.
std::size_t depthOf(const vel::SymbolDataType* type) {
  const auto* const array = dynamic_cast<const ArrayType*>(type);
  return array != nullptr ? array->bounds.size() + depthOf(array->element) : 0;
}

std::size_t depthIn(const Expr& list) {
  std::size_t depth = 0;
  for (int i = list.kind == ExprKind::Repeat ? 1 : 0; i < list.leavesCount(); ++i) {
    const auto& item = static_cast<const Expr&>(*list.leaf(i));
    if (item.kind == ExprKind::Repeat) depth = std::max(depth, depthIn(item));
    if (item.kind == ExprKind::ArrayValue) depth = std::max(depth, depthIn(item) + 1);
  }
  return depth;
}

}  // namespace

// The value of an element that is an array consists of lists too. Deeper ones are rows.
ArrayValues::ArrayValues(const ArrayType& arrayType, std::size_t first, const Expr& list)
    : array(arrayType),
      dimension(first),
      rows(first + 1 < arrayType.bounds.size() && depthIn(list) > depthOf(arrayType.element)) {}

std::int64_t ArrayValues::capacity() const {
  return rows ? static_cast<std::int64_t>(array.bounds[dimension].count()) : array.count(dimension);
}

ArrayType ArrayValues::rowType() const {
  const auto first = array.bounds.begin() + static_cast<std::ptrdiff_t>(dimension) + 1;
  return {array.element, {first, array.bounds.end()}, nullptr};
}

}  // namespace refhost
