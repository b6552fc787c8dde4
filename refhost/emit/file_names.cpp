#include "refhost/emit/file_names.h"

#include <fmt/format.h>

#include <cctype>
#include <string_view>
#include <unordered_map>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "refhost/emit/type_text.h"

namespace refhost {

using vel::POUType;

void FileNames::nameAll() {
  nameUnits();
  nameTypes();
  nameArrays();
}

std::string FileNames::unoperated(const std::string& name) const {
  const vel::STOperator* const op = services_.operators->findOperator(name);
  return op != nullptr && op->name == name ? name + "_" : name;
}

void FileNames::nameUnits() {
  const auto& units = services_.symbols.units();
  for (UnitSymbol* const unit : units) unit->cName = names_.allocate(unoperated(unit->name()));
  nameGlobals();
  for (UnitSymbol* const unit : units) {
    nameVariables(*unit);
    if (unit->type() == POUType::Function) continue;
    unit->cInit = names_.allocate(unit->cName + "_init");
    unit->cBody = names_.allocate(unit->cName + "_body");
    if (unit->type() == POUType::Program) {
      unit->cScan = names_.allocate(unit->cName + "_scan");
      unit->cData = names_.allocate(unit->cName + "_data");
    }
  }
}

void FileNames::nameVariables(UnitSymbol& unit) {
  CNames names(CNames::Scope::Block);
  // Inside a function its own name stays that of the C function.
  if (unit.type() == POUType::Function) names.allocate(unit.cName);
  for (const auto& variable : unit.variables()) {
    const bool edge = variable->role == Role::EdgeState;
    variable->cName = variable.get() == unit.result
                          ? "vel_result"
                          : names.allocate((edge ? "edge_" : "") + unoperated(variable->name()));
  }
}

void FileNames::nameGlobals() {
  UnitSymbol* const globals = services_.symbols.globals();
  if (globals == nullptr) return;
  globals->cName = names_.allocate("globals");
  globals->cInit = names_.allocate("globals_init");
  globals->cData = names_.allocate("globals_data");
  nameVariables(*globals);
}

void FileNames::nameTypes() {
  for (const auto& owned : services_.symbols.ownedTypes()) {
    auto* const structure = dynamic_cast<StructType*>(owned.get());
    if (structure == nullptr) continue;
    const std::string& name = structure->name();
    structure->cName = names_.allocate(unoperated(name.substr(0, name.find('#'))));
    structure->cInit = names_.allocate(structure->cName + "_init");
    CNames names(CNames::Scope::Block);
    for (const auto& member : structure->members()) {
      member->cName = names.allocate(unoperated(member->name()));
    }
  }
}

// Arrays of as many elements of the same C type are one type in C.
void FileNames::nameArrays() {
  std::unordered_map<std::string, std::string> arrays;
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
      name = names_.allocate(fmt::format("array_{}_{}", array->count(), element));
    }
    array->cName = name;
  }
}

}  // namespace refhost
