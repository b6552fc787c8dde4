#include "refhost/emit/declarations.h"

#include <fmt/format.h>

#include <string_view>
#include <unordered_set>

#include "host/text.h"
#include "refhost/emit/type_text.h"

namespace refhost {

using vel::POUType;

namespace {

void appendStructure(const SymbolNames& names, const StructType& structure, std::string& out) {
  out += fmt::format("\nVEL_STRUCT {} {{\n", names.of(structure).name);
  for (const auto& member : structure.members()) {
    out += fmt::format("  {};\n", declaration(names, *member));
  }
  if (structure.members().empty()) out += "  u8 vel_empty;\n";
  out += "};\n";
}

void appendStructure(const SymbolNames& names, const UnitSymbol& unit, std::string& out) {
  out += fmt::format("\nstruct {} {{\n", names.of(unit).name);
  bool empty = true;
  for (const auto& variable : unit.variables()) {
    if (!variable->isKept()) continue;
    empty = false;
    out += variable->placedByInstance ? fmt::format("  u32 {};\n", names.of(*variable))
                                      : fmt::format("  {};\n", declaration(names, *variable));
  }
  for (const auto& variable : unit.variables()) {
    if (keepsCompanion(*variable))
      out += fmt::format("  vel_bit_param {};\n", companion(*variable));
  }
  if (empty) out += "  u8 vel_empty;\n";
  out += "};\n";
  if (unit.type() == POUType::Program && !unit.instantiated) {
    // Unused if nothing but the platform reads and writes the variables.
    out += fmt::format("static struct {} {} __attribute__((unused));\n", names.of(unit).name,
                       names.of(unit).data);
  }
}

}  // namespace

std::string companion(const VarSymbol& parameter) {
  return "offsetParam_" + stringToUpper(parameter.name());
}

bool keepsCompanion(const VarSymbol& variable) {
  return variable.isBitParameter() && variable.role == Role::Input;
}

std::string structures(const SymbolNames& names, const Services& services) {
  const SymbolTable& symbols = services.symbols;
  std::string out;
  std::unordered_set<const vel::SymbolDataType*> done;
  std::unordered_set<std::string> arrays;
  // A structure need not precede those with pointers to it.
  const auto visit = [&](const auto& self, const vel::SymbolDataType* type) -> void {
    if (!isComposite(type) || !done.insert(type).second) return;
    if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
      self(self, array->element);
      if (!arrays.insert(names.of(*array).name).second) return;
      out += fmt::format("\nVEL_STRUCT {} {{\n  {};\n}};\n", names.of(*array).name,
                         declaration(names, array->element, fmt::format("a[{}]", array->count())));
    } else if (const OpenArrayType* const open = asOpenArray(type)) {
      if (!arrays.insert(names.of(*open).name).second) return;
      const std::string element = isTextType(open->element)
                                      ? declaration(names, open->element, "(*a)")
                                      : pointerText(names, open->element) + " a";
      out += fmt::format("\nstruct {0} {{\n  {1};\n  i64 low[{2}];\n  i64 high[{2}];\n}};\n",
                         names.of(*open).name, element, open->dimensions);
    } else if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
      for (const auto& member : structure->members()) {
        if (!member->indirect) self(self, member->dataType());
      }
      appendStructure(names, *structure, out);
    } else if (const auto* const instance = dynamic_cast<const InstanceType*>(type)) {
      const UnitSymbol& block = *instance->unit;
      for (const auto& variable : block.variables()) {
        const vel::SymbolDataType* const own = variable->dataType();
        if (!variable->indirect || asOpenArray(own) != nullptr) self(self, own);
      }
      appendStructure(names, block, out);
    }
  };
  for (const auto& owned : symbols.ownedTypes()) visit(visit, owned.get());
  for (const UnitSymbol* const unit : symbols.units()) {
    visit(visit, unit->fbType());
    for (const auto& variable : unit->variables()) visit(visit, variable->dataType());
    if (unit->type() == vel::POUType::Program) appendStructure(names, *unit, out);
  }
  if (const UnitSymbol* const globals = symbols.globals()) {
    for (const auto& variable : globals->variables()) visit(visit, variable->dataType());
    appendStructure(names, *globals, out);
  }
  for (const ProgramInstance& instance : services.configuration.instances) {
    out += fmt::format("static struct {} {} __attribute__((unused));\n",
                       names.of(*instance.program).name, names.of(instance).data);
  }
  return out;
}

std::string functionHead(const SymbolNames& names, const UnitSymbol& function) {
  std::string parameters;
  const auto add = [&parameters](const std::string& text) {
    if (!parameters.empty()) parameters += ", ";
    parameters += text;
  };
  for (int i = 0; i < function.paramsCount(); ++i) {
    const auto& parameter = *static_cast<const VarSymbol*>(function.param(i));
    const vel::SymbolDataType* const type = parameter.dataType();
    const std::string& name = names.of(parameter);
    if (parameter.role == Role::Output) {
      add(isTextType(type) ? fmt::format("{}* {}", characterType(*type), name)
                           : declaration(names, type, "*" + name));
    } else if (isTextType(type) && !parameter.indirect) {
      add(fmt::format("const {}* vel_{}", characterType(*type), name));
    } else {
      add(declaration(names, parameter));
    }
    if (keepsCompanion(parameter)) add("vel_bit_param " + companion(parameter));
  }
  const vel::SymbolDataType* const result =
      function.result != nullptr ? function.result->dataType() : nullptr;
  std::string resultText = result != nullptr ? typeText(names, result) : "void";
  if (isTextType(result)) {
    resultText = result->dataType() == BasicDataType::String ? "char*" : "u16*";
    add(resultText + " vel_result");
  }
  return fmt::format("static {} {}({})", resultText, names.of(function).name,
                     parameters.empty() ? "void" : parameters);
}

namespace {

std::string initHead(const std::string& init, const std::string& structure, bool places) {
  return fmt::format("static void {}(struct {}* self{})", init, structure,
                     places ? ", const u32* vel_places" : "");
}

}  // namespace

std::string initHead(FileContext& file, const StructType& structure) {
  const TypeNames& names = file.names.of(structure);
  return initHead(names.init, names.name, file.services.configured.open.countIn(&structure) != 0);
}

std::string initHead(FileContext& file, const UnitSymbol& unit) {
  const UnitNames& names = file.names.of(unit);
  return initHead(names.init, names.name, file.services.configured.open.countIn(unit) != 0);
}

std::string placesTable(const ConfiguredVariables::Root& root) {
  std::string values;
  for (const auto& [number, raw] : root.places) {
    values += (values.empty() ? "" : ", ") + std::to_string(raw);
  }
  return "static const u32 vel_places[] = {" + values + "};";
}

std::string prototypes(FileContext& file) {
  const SymbolNames& names = file.names;
  std::string out;
  for (const auto& owned : file.services.symbols.ownedTypes()) {
    const auto* const structure = dynamic_cast<const StructType*>(owned.get());
    if (structure == nullptr || !file.startValues.differFromZero(structure)) continue;
    out += initHead(file, *structure) + " __attribute__((unused));\n";
  }
  if (const UnitSymbol* const globals = file.services.symbols.globals()) {
    out += fmt::format("static void {}(void);\n", names.of(*globals).init);
  }
  for (const UnitSymbol* const unit : file.services.symbols.units()) {
    if (unit->type() == POUType::Function) {
      out += functionHead(names, *unit) + " __attribute__((unused));\n";
    } else if (unit->type() == POUType::FunctionBlock || unit->instantiated) {
      out += initHead(file, *unit) + " __attribute__((unused));\n";
      out += fmt::format("static void {}(struct {}* self) __attribute__((unused));\n",
                         names.of(*unit).body, names.of(*unit).name);
    } else {
      out += fmt::format("void {}(void);\nvoid {}(void);\n", names.of(*unit).init,
                         names.of(*unit).scan);
    }
  }
  for (const ProgramInstance& instance : file.services.configuration.instances) {
    out += fmt::format("void {}(void);\nvoid {}(void);\n", names.of(instance).init,
                       names.of(instance).scan);
  }
  if (!names.configuration.init.empty()) {
    out += fmt::format("void {}(void);\nextern const vel_task {}[];\n", names.configuration.init,
                       names.configuration.tasks);
  }
  return out.empty() ? out : "\n" + out;
}

}  // namespace refhost
