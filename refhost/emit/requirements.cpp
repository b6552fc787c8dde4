#include "refhost/emit/requirements.h"

#include <fmt/format.h>

#include "refhost/emit/declarations.h"

namespace refhost {

namespace {

// What pointers to pointers lead to in the end.
const vel::SymbolDataType* targetOf(const vel::SymbolDataType* type) {
  while (const auto* const pointer = dynamic_cast<const PointerType*>(type)) type = pointer->target;
  return type;
}

// The type of the elements of an array; null for all else.
const vel::SymbolDataType* elementOf(const vel::SymbolDataType* type) {
  const auto* const array = dynamic_cast<const ArrayType*>(type);
  const OpenArrayType* const open = asOpenArray(type);
  return array != nullptr ? array->element : open != nullptr ? open->element : nullptr;
}

}  // namespace

void Requirements::complete(const vel::SymbolDataType* type) { add(type, true); }

void Requirements::pointed(const vel::SymbolDataType* type) { add(type, false); }

void Requirements::include(const std::string& file) {
  if (file != own_) includes_.insert(file);
}

void Requirements::add(const vel::SymbolDataType* type, bool isComplete) {
  if (dynamic_cast<const PointerType*>(type) != nullptr) {
    type = targetOf(type);
    isComplete = false;
  }
  if (!isComposite(type)) return;
  if (const vel::SymbolDataType* const element = elementOf(type)) {
    const std::string& name = file_.names.of(*type).name;
    if (!isComplete) {
      pointed_.emplace(name, "");
    } else if (arrays_.insert(name).second) {
      add(element, asOpenArray(type) == nullptr);
      structures_ += structure(file_, *type);
    }
    return;
  }
  const auto* const instance = dynamic_cast<const InstanceType*>(type);
  const std::string& file = instance != nullptr ? files_.of(*instance->unit)
                                                : files_.of(static_cast<const StructType&>(*type));
  if (isComplete) return include(file);
  pointed_.emplace(
      instance != nullptr ? file_.names.of(*instance->unit).name : file_.names.of(*type).name,
      file);
}

void Requirements::named(const NamedSymbols& symbols) {
  for (const UnitSymbol* const unit : symbols.units) include(files_.of(*unit));
  // Sorted, so that the text does not depend on where the symbols are in memory.
  std::map<std::string, const vel::SymbolDataType*> arrays;
  for (const vel::SymbolDataType* type : symbols.types) {
    type = targetOf(type);
    while (const vel::SymbolDataType* const element = elementOf(type)) {
      if (!arrays.emplace(file_.names.of(*type).name, type).second) break;
      type = targetOf(element);
    }
    if (elementOf(type) == nullptr) complete(type);
  }
  for (const auto& [name, array] : arrays) complete(array);
}

std::string Requirements::inclusions() const {
  std::string text;
  for (const std::string& file : includes_) text += fmt::format("#include \"{}.h\"\n", file);
  return text;
}

std::string Requirements::declarations() const {
  std::string text;
  for (const auto& [name, file] : pointed_) {
    const bool declared = file == own_ || includes_.count(file) != 0 || arrays_.count(name) != 0;
    if (!declared) text += fmt::format("struct {};\n", name);
  }
  return (text.empty() ? "" : '\n' + text) + structures_;
}

}  // namespace refhost
