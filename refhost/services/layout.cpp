#include "refhost/services/layout.h"

#include <algorithm>
#include <limits>

#include "refhost/services/dependency_order.h"

namespace refhost {

namespace {

using Type = vel::SymbolDataType;

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();
constexpr Layout kPointer{8, 8};

std::uint64_t sum(std::uint64_t a, std::uint64_t b) { return a > kLargest - b ? kLargest : a + b; }

std::uint64_t product(std::uint64_t a, std::uint64_t b) {
  std::uint64_t result = 0;
  return __builtin_mul_overflow(a, b, &result) ? kLargest : result;
}

std::uint64_t aligned(std::uint64_t size, std::uint64_t alignment) {
  return size > kLargest - alignment ? kLargest : (size + alignment - 1) / alignment * alignment;
}

// True of a function block and of a structure that has a name in the program.
bool isNamed(const Type& type) {
  const auto* const structure = dynamic_cast<const StructType*>(&type);
  return structure != nullptr ? kindOf(structure->declared) == NodeKind::Text : isInstance(&type);
}

// An ARRAY[*] is a pointer and two bounds for each dimension.
bool hasParts(const Type& type) { return isComposite(&type) && asOpenArray(&type) == nullptr; }

std::optional<Layout> simpleLayout(const Type& type) {
  if (const OpenArrayType* const open = asOpenArray(&type)) {
    return Layout{8 + 16 * static_cast<std::uint64_t>(open->dimensions), 8};
  }
  if (const auto* const text = dynamic_cast<const StringType*>(&type)) {
    return Layout{static_cast<std::uint64_t>(text->byteSize()),
                  text->dataType() == BasicDataType::String ? 1U : 2U};
  }
  const BasicDataType value = valueType(&type);
  if (value == BasicDataType::Pointer) return kPointer;
  const ElementaryType* const row = elementaryType(value);
  if (row == nullptr) return std::nullopt;
  const auto size = static_cast<std::uint64_t>(row->size);
  return Layout{size, size};
}

}  // namespace

std::vector<const Type*> compositeParts(const Type& type) {
  std::vector<const Type*> parts;
  const auto add = [&parts](const Type* part) {
    if (isComposite(part)) parts.push_back(part);
  };
  if (const auto* const array = dynamic_cast<const ArrayType*>(&type)) add(array->element);
  const auto* const structure = dynamic_cast<const StructType*>(&type);
  const auto* const instance = dynamic_cast<const InstanceType*>(&type);
  const auto* const variables = structure != nullptr  ? &structure->members()
                                : instance != nullptr ? &instance->unit->variables()
                                                      : nullptr;
  if (variables == nullptr) return parts;
  for (const auto& variable : *variables) {
    if (!variable->indirect && variable->isKept()) add(variable->dataType());
  }
  return parts;
}

Layouts::Entry& Layouts::entryOf(const Type& type) {
  Entry& entry = entries_[&type];
  entry.type = &type;
  return entry;
}

std::optional<Layout> Layouts::of(const Type* type) {
  if (type == nullptr) return std::nullopt;
  if (!hasParts(*type)) return simpleLayout(*type);
  Entry& entry = entryOf(*type);
  visitDependencies(
      entry,
      [this](const Entry& item) {
        std::vector<Entry*> parts;
        for (const Type* const part : compositeParts(*item.type)) parts.push_back(&entryOf(*part));
        return parts;
      },
      [this](const std::vector<Entry*>& cycle) {
        const auto named = std::find_if(cycle.begin(), cycle.end(),
                                        [](const Entry* e) { return isNamed(*e->type); });
        const Type* const first = (named != cycle.end() ? *named : cycle.front())->type;
        const bool isNew = std::find(cyclic_.begin(), cyclic_.end(), first) == cyclic_.end();
        if (isNew) cyclic_.push_back(first);
      },
      [this](Entry& item, const auto&) { item.layout = compute(*item.type); });
  return entry.layout;
}

std::optional<Layout> Layouts::ofVariables(const UnitSymbol& unit) {
  Layout whole;
  for (const auto& variable : unit.variables()) {
    if (!variable->isKept()) continue;
    of(variable->dataType());
    if (!append(whole, *variable)) return std::nullopt;
  }
  // A structure without members has one in C.
  whole.size = aligned(std::max<std::uint64_t>(whole.size, 1), whole.alignment);
  return whole;
}

std::optional<Layout> Layouts::known(const Type* type) {
  if (type == nullptr) return std::nullopt;
  return hasParts(*type) ? entryOf(*type).layout : simpleLayout(*type);
}

bool Layouts::append(Layout& whole, const VarSymbol& variable) {
  const bool pointer = variable.indirect && asOpenArray(variable.dataType()) == nullptr;
  // Such a variable is in device memory; its instance holds its raw address.
  const auto part = variable.placedByInstance ? Layout{4, 4}
                    : pointer                 ? kPointer
                                              : known(variable.dataType());
  if (!part) return false;
  whole.size = sum(aligned(whole.size, part->alignment), part->size);
  whole.alignment = std::max(whole.alignment, part->alignment);
  whole.depth = std::max(whole.depth, part->depth);
  whole.holdsInstance = whole.holdsInstance || part->holdsInstance;
  return true;
}

// The layouts of the parts are known, except on a cycle.
std::optional<Layout> Layouts::compute(const Type& type) {
  std::optional<Layout> whole;
  if (const auto* const array = dynamic_cast<const ArrayType*>(&type)) {
    whole = known(array->element);
    if (whole) whole->size = product(whole->size, static_cast<std::uint64_t>(array->count()));
  } else if (const auto* const instance = dynamic_cast<const InstanceType*>(&type)) {
    whole = ofVariables(*instance->unit);
    if (whole) whole->holdsInstance = true;
  } else {
    whole.emplace();
    for (const auto& member : static_cast<const StructType&>(type).members()) {
      if (!append(*whole, *member)) return std::nullopt;
    }
    whole->size = aligned(std::max<std::uint64_t>(whole->size, 1), whole->alignment);
  }
  if (whole) ++whole->depth;
  return whole;
}

}  // namespace refhost
