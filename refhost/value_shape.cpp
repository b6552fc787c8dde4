#include "refhost/value_shape.h"

#include "refhost/emit/symbol_names.h"
#include "refhost/emit/type_text.h"

namespace refhost {

using Shape = ValueShapes::Shape;

namespace {

Shape elementaryShape(const vel::SymbolDataType& type) {
  auto shape = std::make_shared<ValueShape>();
  shape->typeName = type.typeName();
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
  }
  return shape->byteSize != 0 ? shape : nullptr;
}

}  // namespace

Shape ValueShapes::of(const vel::SymbolDataType* type) {
  if (type == nullptr || isInstance(type)) return nullptr;
  const auto known = known_.find(type);
  if (known != known_.end()) return known->second;
  Shape shape = make(*type);
  known_.emplace(type, shape);
  return shape;
}

Shape ValueShapes::make(const vel::SymbolDataType& type) {
  const auto* const array = dynamic_cast<const ArrayType*>(&type);
  const auto* const structure = dynamic_cast<const StructType*>(&type);
  if (array == nullptr && structure == nullptr) return elementaryShape(type);
  auto shape = std::make_shared<ValueShape>();
  shape->typeName = type.typeName();
  shape->cType = typeText(names_, &type);
  if (array != nullptr) {
    shape->element = of(array->element);
    shape->count = array->count();
    for (const Bounds& bounds : array->bounds) {
      shape->bounds.emplace_back(static_cast<std::int64_t>(bounds.low),
                                 static_cast<std::int64_t>(bounds.high));
    }
    return shape->element != nullptr ? shape : nullptr;
  }
  shape->isStructure = true;
  for (const auto& member : structure->members()) {
    if (member->indirect) continue;
    Shape part = of(member->dataType());
    if (part == nullptr) continue;
    shape->members.push_back({member->name(), "." + names_.of(*member), std::move(part)});
  }
  return shape->members.empty() ? nullptr : shape;
}

}  // namespace refhost
