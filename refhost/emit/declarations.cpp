#include "refhost/emit/declarations.h"

#include <fmt/format.h>

#include <string_view>
#include <unordered_set>

#include "host/text.h"
#include "refhost/emit/declaration_comments.h"
#include "refhost/emit/type_text.h"

namespace refhost {

using vel::POUType;

namespace {

std::string structure(const FileContext& file, const StructType& structure) {
  const SymbolNames& names = file.names;
  std::string out = "\n" + commentOn(file, structure);
  out += fmt::format("VEL_STRUCT {} {{\n", names.of(structure).name);
  for (const auto& member : structure.members()) {
    out += fmt::format("  {};{}\n", declaration(names, *member), commentOn(file, *member));
  }
  if (structure.members().empty()) out += "  u8 vel_empty;\n";
  return out + "};\n";
}

std::string structure(const FileContext& file, const ArrayType& array) {
  return fmt::format("\nVEL_STRUCT {} {{\n  {};\n}};\n", file.names.of(array).name,
                     declaration(file.names, array.element, fmt::format("a[{}]", array.count())));
}

std::string structure(const FileContext& file, const OpenArrayType& open) {
  const std::string element = isTextType(open.element)
                                  ? declaration(file.names, open.element, "(*a)")
                                  : pointerText(file.names, open.element) + " a";
  return fmt::format("\nstruct {0} {{\n  {1};\n  i64 low[{2}];\n  i64 high[{2}];\n}};\n",
                     file.names.of(open).name, element, open.dimensions);
}

std::string guarded(const std::string& name, const std::string& text) {
  return fmt::format("\n#ifndef VEL_DEFINED_{0}\n#define VEL_DEFINED_{0}{1}#endif\n", name, text);
}

}  // namespace

std::string structure(const FileContext& file, const UnitSymbol& unit) {
  const SymbolNames& names = file.names;
  std::string out = "\n" + commentOn(file, unit);
  out += fmt::format("struct {} {{\n", names.of(unit).name);
  bool empty = true;
  for (const auto& variable : unit.variables()) {
    if (!variable->isKept()) continue;
    empty = false;
    out += variable->placedByInstance ? fmt::format("  u32 {};", names.of(*variable))
                                      : fmt::format("  {};", declaration(names, *variable));
    out += commentOn(file, *variable) + '\n';
  }
  for (const auto& variable : unit.variables()) {
    if (keepsCompanion(*variable))
      out += fmt::format("  vel_bit_param {};\n", companion(*variable));
  }
  if (empty) out += "  u8 vel_empty;\n";
  return out + "};\n";
}

std::string structure(const FileContext& file, const vel::SymbolDataType& type) {
  const auto* const array = dynamic_cast<const ArrayType*>(&type);
  const OpenArrayType* const open = asOpenArray(&type);
  if (array != nullptr || open != nullptr) {
    const std::string text = array != nullptr ? structure(file, *array) : structure(file, *open);
    return file.shared ? guarded(file.names.of(type).name, text) : text;
  }
  if (const auto* const instance = dynamic_cast<const InstanceType*>(&type)) {
    const UnitSymbol& block = *instance->unit;
    const std::string text = structure(file, block);
    return file.shared && block.standard ? guarded(file.names.of(block).name, text) : text;
  }
  return structure(file, static_cast<const StructType&>(type));
}

std::string companion(const VarSymbol& parameter) {
  return "offsetParam_" + stringToUpper(parameter.name());
}

bool keepsCompanion(const VarSymbol& variable) {
  return variable.isBitParameter() && variable.role == Role::Input;
}

void declareInOrder(const FileContext& file, const InOrder& declare) {
  std::unordered_set<const vel::SymbolDataType*> done;
  std::unordered_set<std::string> arrays;
  const auto visit = [&](const auto& self, const vel::SymbolDataType* type) -> void {
    if (!isComposite(type) || !done.insert(type).second) return;
    if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
      self(self, array->element);
      if (!arrays.insert(file.names.of(*array).name).second) return;
    } else if (const OpenArrayType* const open = asOpenArray(type)) {
      if (!arrays.insert(file.names.of(*open).name).second) return;
    } else if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
      for (const auto& member : structure->members()) {
        if (!member->indirect) self(self, member->dataType());
      }
    } else if (const auto* const instance = dynamic_cast<const InstanceType*>(type)) {
      for (const auto& variable : instance->unit->variables()) {
        const vel::SymbolDataType* const own = variable->dataType();
        if (!variable->indirect || asOpenArray(own) != nullptr) self(self, own);
      }
    }
    declare.type(*type);
  };
  const SymbolTable& symbols = file.services.symbols;
  for (const auto& owned : symbols.ownedTypes()) visit(visit, owned.get());
  for (const UnitSymbol* const unit : symbols.units()) {
    visit(visit, unit->instanceType());
    for (const auto& variable : unit->variables()) visit(visit, variable->dataType());
    // A PROGRAM of which tests have instances has been declared with its type.
    const bool declared = unit->type() == vel::POUType::Program && unit->instanceType() != nullptr;
    if (!declared) declare.unit(*unit);
  }
  if (const UnitSymbol* const globals = symbols.globals()) {
    for (const auto& variable : globals->variables()) visit(visit, variable->dataType());
    declare.unit(*globals);
  }
}

std::string structures(const FileContext& file) {
  std::string out;
  const auto type = [&](const vel::SymbolDataType& each) { out += structure(file, each); };
  const auto unit = [&](const UnitSymbol& each) {
    if (each.type() == POUType::Program) out += structure(file, each);
    if (hasData(each)) out += dataDeclaration(file, each);
  };
  declareInOrder(file, {type, unit});
  for (const ProgramInstance& instance : file.services.configuration.instances) {
    out += dataDeclaration(file, instance);
  }
  return out;
}

bool hasData(const UnitSymbol& unit) {
  return unit.type() == POUType::Program && !unit.instantiated;
}

namespace {

std::string dataDeclaration(const FileContext& file, const UnitNames& unit,
                            const std::string& data) {
  // Unused if nothing but the platform reads and writes the variables.
  return file.shared
             ? fmt::format("extern struct {} {};\n", unit.name, data)
             : fmt::format("static struct {} {} __attribute__((unused));\n", unit.name, data);
}

}  // namespace

std::string dataDeclaration(const FileContext& file, const UnitSymbol& unit) {
  return dataDeclaration(file, file.names.of(unit), file.names.of(unit).data);
}

std::string dataDeclaration(const FileContext& file, const ProgramInstance& instance) {
  return dataDeclaration(file, file.names.of(*instance.program), file.names.of(instance).data);
}

std::string dataDefinition(const FileContext& file, const UnitSymbol& unit) {
  const UnitNames& names = file.names.of(unit);
  return fmt::format("struct {} {};\n", names.name, names.data);
}

std::string dataDefinition(const FileContext& file, const ProgramInstance& instance) {
  return fmt::format("struct {} {};\n", file.names.of(*instance.program).name,
                     file.names.of(instance).data);
}

std::string dataDefinitions(const FileContext& file) {
  std::string out;
  for (const UnitSymbol* const unit : file.services.symbols.units()) {
    if (hasData(*unit)) out += dataDefinition(file, *unit);
  }
  const UnitSymbol* const globals = file.services.symbols.globals();
  if (globals != nullptr) out += dataDefinition(file, *globals);
  for (const ProgramInstance& instance : file.services.configuration.instances) {
    out += dataDefinition(file, instance);
  }
  return out.empty() ? out : "\n" + out;
}

std::string functionHead(const FileContext& file, const UnitSymbol& function) {
  const SymbolNames& names = file.names;
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
  return fmt::format("{}{} {}({})", file.linkage(function), resultText, names.of(function).name,
                     parameters.empty() ? "void" : parameters);
}

namespace {

std::string initHead(const char* linkage, const std::string& init, const std::string& structure,
                     bool places) {
  return fmt::format("{}void {}(struct {}* self{})", linkage, init, structure,
                     places ? ", const u32* vel_places" : "");
}

}  // namespace

std::string initHead(FileContext& file, const StructType& structure) {
  const TypeNames& names = file.names.of(structure);
  return initHead(file.linkage(), names.init, names.name,
                  file.services.configured.open.countIn(&structure) != 0);
}

std::string initHead(FileContext& file, const UnitSymbol& unit) {
  const UnitNames& names = file.names.of(unit);
  return initHead(file.linkage(unit), names.init, names.name,
                  file.services.configured.open.countIn(unit) != 0);
}

std::string placesTable(const ConfiguredVariables::Root& root) {
  std::string values;
  for (const auto& [number, raw] : root.places) {
    values += (values.empty() ? "" : ", ") + std::to_string(raw);
  }
  return "static const u32 vel_places[] = {" + values + "};";
}

namespace {

// An internal function may be unused.
std::string prototype(const std::string& head, bool internal) {
  return head + (internal ? " __attribute__((unused));\n" : ";\n");
}

std::string runPrototypes(const UnitNames& names) {
  return fmt::format("void {}(void);\nvoid {}(void);\n", names.init, names.scan);
}

}  // namespace

std::string prototypes(FileContext& file, const StructType& structure) {
  return file.startValues.differFromZero(&structure)
             ? prototype(initHead(file, structure), !file.shared)
             : "";
}

std::string prototypes(FileContext& file, const UnitSymbol& unit) {
  const UnitNames& names = file.names.of(unit);
  if (&unit == file.services.symbols.globals()) {
    return fmt::format("{}void {}(void);\n", file.linkage(unit), names.init);
  }
  const bool internal = file.isInternal(unit);
  if (unit.type() == POUType::Function) return prototype(functionHead(file, unit), internal);
  if (hasData(unit)) return runPrototypes(names);
  const std::string body =
      fmt::format("{}void {}(struct {}* self)", file.linkage(unit), names.body, names.name);
  return prototype(initHead(file, unit), internal) + prototype(body, internal);
}

std::string prototypes(FileContext& file, const ProgramInstance& instance) {
  return runPrototypes(file.names.of(instance));
}

std::string configurationPrototypes(const FileContext& file) {
  const ConfigurationNames& names = file.names.configuration;
  if (names.init.empty()) return {};
  // Others need the number of rows, for the states of the tasks.
  const std::string rows = file.shared ? std::to_string(names.rows.size() + 1) : "";
  return fmt::format("void {}(void);\nextern const vel_task {}[{}];\n", names.init, names.tasks,
                     rows);
}

std::string prototypes(FileContext& file) {
  std::string out;
  for (const auto& owned : file.services.symbols.ownedTypes()) {
    const auto* const structure = dynamic_cast<const StructType*>(owned.get());
    if (structure != nullptr) out += prototypes(file, *structure);
  }
  if (const UnitSymbol* const globals = file.services.symbols.globals()) {
    out += prototypes(file, *globals);
  }
  for (const UnitSymbol* const unit : file.services.symbols.units()) {
    if (!unit->isTest()) out += prototypes(file, *unit);
  }
  for (const ProgramInstance& instance : file.services.configuration.instances) {
    out += prototypes(file, instance);
  }
  out += configurationPrototypes(file);
  return out.empty() ? out : "\n" + out;
}

}  // namespace refhost
