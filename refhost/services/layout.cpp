#include "refhost/services/layout.h"

#include <algorithm>
#include <limits>

namespace refhost {

namespace {

constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();

std::uint64_t sum(std::uint64_t a, std::uint64_t b) { return a > kMost - b ? kMost : a + b; }

std::uint64_t product(std::uint64_t a, std::uint64_t b) {
  std::uint64_t result = 0;
  return __builtin_mul_overflow(a, b, &result) ? kMost : result;
}

std::uint64_t aligned(std::uint64_t size, std::uint64_t alignment) {
  return size > kMost - alignment ? kMost : (size + alignment - 1) / alignment * alignment;
}

}  // namespace

std::optional<Layout> Layouts::of(const vel::SymbolDataType* type) {
  if (type == nullptr) return std::nullopt;
  // A type within itself is found here without a layout.
  const auto [place, isNew] = known_.emplace(type, std::nullopt);
  if (!isNew) return place->second;
  const std::optional<Layout> layout = compute(*type);
  return known_[type] = layout;
}

std::optional<Layout> Layouts::compute(const vel::SymbolDataType& type) {
  if (isInstance(&type)) return std::nullopt;
  if (const auto* const structure = dynamic_cast<const StructType*>(&type)) {
    return ofStructure(*structure);
  }
  if (const auto* const array = dynamic_cast<const ArrayType*>(&type)) {
    auto layout = of(array->element);
    if (layout) layout->size = product(layout->size, static_cast<std::uint64_t>(array->count()));
    return layout;
  }
  if (const auto* const text = dynamic_cast<const StringType*>(&type)) {
    return Layout{static_cast<std::uint64_t>(text->byteSize()),
                  text->dataType() == BasicDataType::String ? 1U : 2U};
  }
  const BasicDataType value = valueType(&type);
  if (value == BasicDataType::Pointer) return Layout{8, 8};
  const ElementaryType* const row = elementaryType(value);
  if (row == nullptr) return std::nullopt;
  const auto size = static_cast<std::uint64_t>(row->size);
  return Layout{size, size};
}

std::optional<Layout> Layouts::ofStructure(const StructType& structure) {
  Layout whole;
  for (const auto& member : structure.members()) {
    const auto part = of(member->dataType());
    if (!part) return std::nullopt;
    whole.size = sum(aligned(whole.size, part->alignment), part->size);
    whole.alignment = std::max(whole.alignment, part->alignment);
  }
  // A structure without members has one in C.
  whole.size = aligned(std::max<std::uint64_t>(whole.size, 1), whole.alignment);
  return whole;
}

}  // namespace refhost
