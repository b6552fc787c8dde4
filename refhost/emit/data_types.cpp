// Declarations of the program's types in C.
#include <fmt/format.h>

#include "refhost/emit/c_generator.h"

namespace refhost {

// Arrays of as many elements of the same C type are one type in C.
void CGenerator::nameTypes() {
  std::unordered_map<std::string, std::string> arrays;
  for (const auto& owned : services_.symbols.ownedTypes()) {
    auto* const structure = dynamic_cast<StructType*>(owned.get());
    if (structure == nullptr) continue;
    const std::string& name = structure->name();
    structure->cName = fileNames_.allocate(unoperated(name.substr(0, name.find('#'))));
    structure->cInit = fileNames_.allocate(structure->cName + "_init");
    CNames names(CNames::Scope::Block);
    for (const auto& member : structure->members()) {
      member->cName = names.allocate(unoperated(member->name()));
    }
  }
  // An array's element has been added, and so named, before it.
  for (const auto& owned : services_.symbols.ownedTypes()) {
    auto* const array = dynamic_cast<ArrayType*>(owned.get());
    if (array == nullptr) continue;
    std::string element = declaration(array->element, "of");
    for (char& c : element) {
      const bool letter = std::isalnum(static_cast<unsigned char>(c)) != 0;
      if (!letter) c = c == '*' ? 'p' : '_';
    }
    const std::string text = declaration(array->element, fmt::format("a[{}]", array->count()));
    std::string& name = arrays[text];
    if (name.empty()) {
      constexpr std::string_view kStruct = "struct_";
      if (element.compare(0, kStruct.size(), kStruct) == 0) element.erase(0, kStruct.size());
      element.erase(element.rfind("_of"), 3);
      name = fileNames_.allocate(fmt::format("array_{}_{}", array->count(), element));
    }
    array->cName = name;
  }
}

// Each type behind those that it holds.
std::string CGenerator::structures() {
  std::string out;
  std::unordered_set<const Type*> done;
  std::unordered_set<std::string> arrays;
  const auto visit = [&](const auto& self, const Type* type) -> void {
    if (!isComposite(type) || !done.insert(type).second) return;
    if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
      self(self, array->element);
      if (!arrays.insert(array->cName).second) return;
      out += fmt::format("\nVEL_STRUCT {} {{\n  {};\n}};\n", array->cName,
                         declaration(array->element, fmt::format("a[{}]", array->count())));
    } else if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
      for (const auto& member : structure->members()) self(self, member->dataType());
      appendStructure(*structure, out);
    } else if (const auto* const instance = dynamic_cast<const InstanceType*>(type)) {
      const UnitSymbol& block = *instance->unit;
      for (const auto& variable : block.variables()) self(self, variable->dataType());
      appendStructure(block, out);
    }
  };
  for (const auto& owned : services_.symbols.ownedTypes()) visit(visit, owned.get());
  for (const UnitSymbol* const unit : services_.symbols.units()) {
    visit(visit, unit->fbType());
    for (const auto& variable : unit->variables()) visit(visit, variable->dataType());
    if (unit->type() == vel::POUType::Program) appendStructure(*unit, out);
  }
  if (const UnitSymbol* const globals = services_.symbols.globals()) {
    for (const auto& variable : globals->variables()) visit(visit, variable->dataType());
    appendStructure(*globals, out);
  }
  return out;
}

void CGenerator::appendStructure(const StructType& structure, std::string& out) const {
  out += fmt::format("\nVEL_STRUCT {} {{\n", structure.cName);
  for (const auto& member : structure.members()) {
    out += fmt::format("  {};\n", declaration(member->dataType(), member->cName));
  }
  if (structure.members().empty()) out += "  u8 vel_empty;\n";
  out += "};\n";
}

}  // namespace refhost
