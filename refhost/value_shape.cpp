#include "refhost/value_shape.h"

#include "refhost/emit/symbol_names.h"

namespace refhost {

using Shape = std::shared_ptr<const ValueShape>;

namespace {

Shape arrayShape(const SymbolNames& names, const ArrayType& array) {
  auto shape = std::make_shared<ValueShape>();
  shape->typeName = array.typeName();
  shape->element = shapeOf(names, array.element);
  shape->count = array.count();
  for (const Bounds& bounds : array.bounds) {
    shape->bounds.emplace_back(static_cast<std::int64_t>(bounds.low),
                               static_cast<std::int64_t>(bounds.high));
  }
  return shape->element != nullptr ? shape : nullptr;
}

Shape structureShape(const SymbolNames& names, const StructType& structure) {
  auto shape = std::make_shared<ValueShape>();
  shape->typeName = structure.typeName();
  shape->isStructure = true;
  for (const auto& member : structure.members()) {
    if (member->indirect) continue;
    Shape part = shapeOf(names, member->dataType());
    if (part == nullptr) continue;
    shape->members.push_back({member->name(), "." + names.of(*member), std::move(part)});
  }
  return shape->members.empty() ? nullptr : shape;
}

}  // namespace

Shape shapeOf(const SymbolNames& names, const vel::SymbolDataType* type) {
  if (type == nullptr || isInstance(type)) return nullptr;
  if (const auto* const array = dynamic_cast<const ArrayType*>(type))
    return arrayShape(names, *array);
  if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
    return structureShape(names, *structure);
  }
  auto shape = std::make_shared<ValueShape>();
  shape->typeName = type->typeName();
  shape->type = valueType(type);
  if (const auto* const enumeration = dynamic_cast<const EnumType*>(type)) {
    for (const auto& value : enumeration->values()) {
      shape->names.emplace_back(value->value, value->name());
    }
  }
  if (const auto* const text = dynamic_cast<const StringType*>(type)) {
    shape->byteSize = text->byteSize();
  } else if (shape->type == BasicDataType::Pointer) {
    shape->byteSize = sizeof(void*);
  } else if (const ElementaryType* const row = elementaryType(shape->type)) {
    shape->byteSize = row->size;
  }
  return shape->byteSize != 0 ? shape : nullptr;
}

}  // namespace refhost
