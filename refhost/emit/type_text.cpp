#include "refhost/emit/type_text.h"

#include <fmt/format.h>

#include "hostkit/literal_text.h"

namespace refhost {
bool isTextType(const vel::SymbolDataType* type) {
  return type != nullptr && isText(type->dataType());
}

const char* characterType(const vel::SymbolDataType& text) {
  return text.dataType() == BasicDataType::String ? "char" : "u16";
}

// vel_any_ types may alias: programs read variables through pointers to other types.
std::string pointerText(const SymbolNames& names, const vel::SymbolDataType* target) {
  if (target == nullptr) return "void*";
  if (isTextType(target)) return std::string(characterType(*target)) + "*";
  const bool plain = elementaryType(valueType(target)) != nullptr;
  return (plain ? "vel_any_" : "") + typeText(names, target) + "*";
}

void appendInteger(Integer value, std::string& out) {
  hostkit::appendInteger(value < 0, static_cast<std::uint64_t>(value < 0 ? -value : value), out);
}

std::string typeText(const SymbolNames& names, const vel::SymbolDataType* type) {
  if (type == nullptr) return {};
  if (isTextType(type)) {
    return fmt::format("{}[{}]", characterType(*type), stringLength(*type) + 1);
  }
  if (const ElementaryType* const row = elementaryType(valueType(type))) return row->cType;
  if (const auto* const instance = dynamic_cast<const InstanceType*>(type)) {
    return "struct " + names.of(*instance->unit).name;
  }
  if (isComposite(type)) return "struct " + names.of(*type).name;
  return pointerText(names, static_cast<const PointerType*>(type)->target);
}

std::string arrayPointerText(const vel::SymbolDataType& text) {
  return fmt::format("{}(*)[{}]", characterType(text), stringLength(text) + 1);
}

std::string declaration(const SymbolNames& names, const vel::SymbolDataType* type,
                        const std::string& name) {
  if (isTextType(type)) {
    return fmt::format("{} {}[{}]", characterType(*type), name, stringLength(*type) + 1);
  }
  return fmt::format("{} {}", typeText(names, type), name);
}

std::string elementPointerText(const SymbolNames& names, const vel::SymbolDataType& element) {
  return isTextType(&element) ? arrayPointerText(element) : pointerText(names, &element);
}

std::string declaration(const SymbolNames& names, const VarSymbol& variable) {
  const vel::SymbolDataType* const type = variable.dataType();
  const std::string& name = names.of(variable);
  if (variable.reference) return fmt::format("{} {}", pointerText(names, type), name);
  if (!variable.indirect || asOpenArray(type) != nullptr) return declaration(names, type, name);
  return isTextType(type) ? fmt::format("{}* {}", characterType(*type), name)
                          : declaration(names, type, "*" + name);
}

std::string zeroText(const SymbolNames& names, const vel::SymbolDataType* type) {
  if (type == nullptr) return "0";
  if (isComposite(type)) return fmt::format("({}){{0}}", declaration(names, type, ""));
  switch (type->dataType()) {
    case BasicDataType::String:
      return "\"\"";
    case BasicDataType::WString:
      return "u\"\"";
    case BasicDataType::Pointer:
      return fmt::format("({})0", declaration(names, type, ""));
    default:
      return "0";
  }
}

}  // namespace refhost
