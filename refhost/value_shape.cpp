#include "refhost/value_shape.h"

#include "refhost/emit/symbol_names.h"
#include "refhost/emit/type_text.h"
#include "refhost/services/layout.h"

namespace refhost {

using Shape = ValueShapes::Shape;

namespace {

ValueShape::Number numberOf(Integer number) {
  return {number < 0, static_cast<std::uint64_t>(number < 0 ? -number : number)};
}

bool isLess(const ValueShape::Number& a, const ValueShape::Number& b) {
  if (a.negative != b.negative) return a.negative && (a.magnitude != 0 || b.magnitude != 0);
  return a.negative ? a.magnitude > b.magnitude : a.magnitude < b.magnitude;
}

// The lowest and the highest number of an integer type.
std::pair<ValueShape::Number, ValueShape::Number> numbersOf(const ElementaryType& type) {
  const bool negative = isSigned(type.type);
  const std::uint64_t highest = ~std::uint64_t{0} >> (64 - type.size * 8 + (negative ? 1 : 0));
  return {{negative, negative ? highest + 1 : 0}, {false, highest}};
}

Shape elementaryShape(const vel::SymbolDataType& type) {
  auto shape = std::make_shared<ValueShape>();
  shape->typeName = displayName(&type);
  shape->type = valueType(&type);
  if (const auto* const enumeration = dynamic_cast<const EnumType*>(&type)) {
    for (const auto& value : enumeration->values()) {
      shape->names.emplace_back(value->value, value->name());
    }
  }
  if (const auto* const text = dynamic_cast<const StringType*>(&type)) {
    shape->byteSize = text->byteSize();
  } else if (shape->type == BasicDataType::Pointer) {
    shape->byteSize = sizeof(void*);
  } else if (const ElementaryType* const row = elementaryType(shape->type)) {
    shape->byteSize = row->size;
    if (isInteger(shape->type)) shape->range = numbersOf(*row);
  }
  if (const auto* const subrange = dynamic_cast<const SubrangeType*>(&type)) {
    shape->range = {numberOf(subrange->range.low), numberOf(subrange->range.high)};
  }
  return shape->byteSize != 0 ? shape : nullptr;
}

}  // namespace

bool ValueShape::allows(const Number& number) const {
  return !range || (!isLess(number, range->first) && !isLess(range->second, number));
}

Shape ValueShapes::retained(const vel::SymbolDataType* type, Retention retention) {
  if (retention == Retention::NonRetain) return nullptr;
  return find(type, retention == Retention::Retain ? Parts::Retained : Parts::DeclaredRetained);
}

Shape ValueShapes::find(const vel::SymbolDataType* type, Parts parts) {
  if (type == nullptr) return nullptr;
  const auto key = std::pair(type, parts);
  const auto known = known_.find(key);
  if (known != known_.end()) return known->second;
  Shape shape = make(*type, parts);
  known_.emplace(key, shape);
  return shape;
}

Shape ValueShapes::make(const vel::SymbolDataType& type, Parts parts) {
  if (const auto* const instance = dynamic_cast<const InstanceType*>(&type)) {
    return ofInstance(*instance->unit, parts);
  }
  const auto* const array = dynamic_cast<const ArrayType*>(&type);
  const auto* const structure = dynamic_cast<const StructType*>(&type);
  if (array == nullptr && structure == nullptr) {
    if (parts == Parts::Values) return elementaryShape(type);
    if (parts == Parts::Instances) return of(&type);
    const bool kept = parts == Parts::Retained && valueType(&type) != BasicDataType::Pointer;
    return kept ? of(&type) : nullptr;
  }
  auto shape = std::make_shared<ValueShape>();
  shape->typeName = displayName(&type);
  shape->cType = typeText(names_, &type);
  if (array != nullptr) {
    shape->element = find(array->element, parts);
    shape->count = array->count();
    shape->stride = layouts_.of(array->element).value_or(Layout{}).size;
    for (const Bounds& bounds : array->bounds) {
      shape->bounds.emplace_back(static_cast<std::int64_t>(bounds.low),
                                 static_cast<std::int64_t>(bounds.high));
    }
    return shape->element != nullptr ? shape : nullptr;
  }
  shape->isStructure = true;
  std::uint64_t end = 0;
  for (const auto& member : structure->members()) {
    if (member->indirect) continue;
    const Layout layout = layouts_.of(member->dataType()).value_or(Layout{});
    const std::uint64_t begin = (end + layout.alignment - 1) / layout.alignment * layout.alignment;
    end = begin + layout.size;
    Shape part = find(member->dataType(), parts);
    if (part == nullptr) continue;
    shape->members.push_back({member->name(), "." + names_.of(*member), std::move(part), begin});
  }
  return shape->members.empty() ? nullptr : shape;
}

Shape ValueShapes::ofInstance(const UnitSymbol& block, Parts parts) {
  if (parts == Parts::Values) return nullptr;
  auto shape = std::make_shared<ValueShape>();
  shape->typeName = block.name();
  shape->cType = typeText(names_, block.fbType());
  shape->isStructure = true;
  for (const auto& member : block.variables()) {
    const bool isMember = member->role != Role::Temp && !member->indirect && !member->constant &&
                          member->iecAddress().area == 0;
    if (!isMember) continue;
    Shape part;
    if (parts != Parts::Instances) {
      Retention retention = member->retention;
      if (retention == Retention::Unsaid && parts == Parts::Retained) retention = Retention::Retain;
      part = retained(member->dataType(), retention);
    } else if (member->role != Role::EdgeState && (member->isParameter() || !block.standard)) {
      part = withInstances(member->dataType());
    }
    if (part == nullptr) continue;
    shape->members.push_back({member->name(), "." + names_.of(*member), std::move(part), 0});
  }
  return shape->members.empty() ? nullptr : shape;
}

}  // namespace refhost
