#include "refhost/emit/declarations.h"

#include <fmt/format.h>

#include <string_view>
#include <unordered_set>

#include "host/text.h"
#include "refhost/emit/type_text.h"

namespace refhost {

using vel::POUType;

namespace {

// Kept between scans, as a member of the unit's structure.
bool isMember(const VarSymbol& variable) {
  return variable.role != Role::Temp && variable.iecAddress().area == 0 && !variable.inMemory;
}

void appendStructure(const StructType& structure, std::string& out) {
  out += fmt::format("\nVEL_STRUCT {} {{\n", structure.cName);
  for (const auto& member : structure.members()) {
    out += fmt::format("  {};\n", declaration(member->dataType(), member->cName));
  }
  if (structure.members().empty()) out += "  u8 vel_empty;\n";
  out += "};\n";
}

void appendStructure(const UnitSymbol& unit, std::string& out) {
  out += fmt::format("\nstruct {} {{\n", unit.cName);
  bool empty = true;
  for (const auto& variable : unit.variables()) {
    if (!isMember(*variable)) continue;
    empty = false;
    const bool pointer = variable->role == Role::InOut;
    if (pointer && isTextType(variable->dataType())) {
      const bool narrow = variable->dataType()->dataType() == BasicDataType::String;
      out += fmt::format("  {}* {};\n", narrow ? "char" : "u16", variable->cName);
    } else {
      out += fmt::format("  {};\n",
                         declaration(variable->dataType(), (pointer ? "*" : "") + variable->cName));
    }
  }
  for (const auto& variable : unit.variables()) {
    if (keepsCompanion(*variable))
      out += fmt::format("  vel_bit_param {};\n", companion(*variable));
  }
  if (empty) out += "  u8 vel_empty;\n";
  out += "};\n";
  if (unit.type() == POUType::Program) {
    // Nothing needs to use what only the platform sets or shows.
    out += fmt::format("static struct {} {} __attribute__((unused));\n", unit.cName, unit.cData);
  }
}

}  // namespace

std::string companion(const VarSymbol& parameter) {
  return "offsetParam_" + stringToUpper(parameter.name());
}

bool keepsCompanion(const VarSymbol& variable) {
  return variable.isBitParameter() && variable.role == Role::Input;
}

std::string structures(const SymbolTable& symbols) {
  std::string out;
  std::unordered_set<const vel::SymbolDataType*> done;
  std::unordered_set<std::string> arrays;
  const auto visit = [&](const auto& self, const vel::SymbolDataType* type) -> void {
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
  for (const auto& owned : symbols.ownedTypes()) visit(visit, owned.get());
  for (const UnitSymbol* const unit : symbols.units()) {
    visit(visit, unit->fbType());
    for (const auto& variable : unit->variables()) visit(visit, variable->dataType());
    if (unit->type() == vel::POUType::Program) appendStructure(*unit, out);
  }
  if (const UnitSymbol* const globals = symbols.globals()) {
    for (const auto& variable : globals->variables()) visit(visit, variable->dataType());
    appendStructure(*globals, out);
  }
  return out;
}

std::string functionHead(const UnitSymbol& function) {
  std::string parameters;
  const auto add = [&parameters](const std::string& text) {
    if (!parameters.empty()) parameters += ", ";
    parameters += text;
  };
  for (int i = 0; i < function.paramsCount(); ++i) {
    const auto& parameter = *static_cast<const VarSymbol*>(function.param(i));
    const vel::SymbolDataType* const type = parameter.dataType();
    const bool input = parameter.role == Role::Input;
    if (isTextType(type)) {
      const char* const unit = type->dataType() == BasicDataType::String ? "char" : "u16";
      add(input ? fmt::format("const {}* vel_{}", unit, parameter.cName)
                : fmt::format("{}* {}", unit, parameter.cName));
    } else {
      add(declaration(type, (input ? "" : "*") + parameter.cName));
    }
    if (keepsCompanion(parameter)) add("vel_bit_param " + companion(parameter));
  }
  const vel::SymbolDataType* const result =
      function.result != nullptr ? function.result->dataType() : nullptr;
  std::string resultText = result != nullptr ? typeText(result) : "void";
  if (isTextType(result)) {
    resultText = result->dataType() == BasicDataType::String ? "char*" : "u16*";
    add(resultText + " vel_result");
  }
  return fmt::format("static {} {}({})", resultText, function.cName,
                     parameters.empty() ? "void" : parameters);
}

std::string prototypes(FileContext& file) {
  std::string out;
  for (const auto& owned : file.services.symbols.ownedTypes()) {
    const auto* const structure = dynamic_cast<const StructType*>(owned.get());
    if (structure == nullptr || !file.startValues.differFromZero(structure)) continue;
    out += fmt::format("static void {}(struct {}* self) __attribute__((unused));\n",
                       structure->cInit, structure->cName);
  }
  if (const UnitSymbol* const globals = file.services.symbols.globals()) {
    out += fmt::format("static void {}(void);\n", globals->cInit);
  }
  for (const UnitSymbol* const unit : file.services.symbols.units()) {
    if (unit->type() == POUType::Function) {
      out += functionHead(*unit) + " __attribute__((unused));\n";
    } else if (unit->type() == POUType::FunctionBlock) {
      for (const std::string& name : {unit->cInit, unit->cBody}) {
        out += fmt::format("static void {}(struct {}* self) __attribute__((unused));\n", name,
                           unit->cName);
      }
    } else {
      out += fmt::format("void {}(void);\nvoid {}(void);\n", unit->cInit, unit->cScan);
    }
  }
  return out.empty() ? out : "\n" + out;
}

}  // namespace refhost
