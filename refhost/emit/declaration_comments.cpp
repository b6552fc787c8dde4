#include "refhost/emit/declaration_comments.h"

#include <fmt/format.h>

#include "refhost/emit/place.h"

namespace refhost {

using vel::POUType;

namespace {

// The name of the file without its folders, in which the C must not depend, and without what could
// end or continue a comment.
std::string fileOf(const FileContext& file, const vel::ASTNode& node) {
  const std::string& path = file.sources.path(node.pos().file());
  std::string name = path.substr(path.find_last_of('/') + 1);
  for (char& c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < ' ' || byte == 0x7F || c == '\\' || c == '?') c = '_';
  }
  return name;
}

const char* sectionOf(const FileContext& file, const VarSymbol& variable) {
  if (variable.owner != nullptr && variable.owner == file.services.symbols.globals()) {
    return "VAR_GLOBAL ";
  }
  switch (variable.role) {
    case Role::Input:
      return "VAR_INPUT ";
    case Role::Output:
      return "VAR_OUTPUT ";
    case Role::InOut:
      return "VAR_IN_OUT ";
    case Role::Member:
      return "";
    default:
      return "VAR ";
  }
}

std::string declared(const FileContext& file, const VarSymbol& variable) {
  return fmt::format("{}{} : {}{}", sectionOf(file, variable), variable.name(),
                     variable.reference ? "REFERENCE TO " : "", displayName(variable.dataType()));
}

const char* keywordOf(const UnitSymbol& unit) {
  switch (unit.type()) {
    case POUType::Function:
      return "FUNCTION";
    case POUType::FunctionBlock:
      return "FUNCTION_BLOCK";
    default:
      return "PROGRAM";
  }
}

}  // namespace

std::string commentOn(const FileContext& file, const UnitSymbol& unit) {
  if (!file.shared) return {};
  std::string text = "// The global variables.\n";
  if (&unit != file.services.symbols.globals()) {
    text = fmt::format("// {} {}", keywordOf(unit), unit.name());
    if (unit.result != nullptr) text += " : " + displayName(unit.result->dataType());
    text += unit.standard ? ", of the standard\n" : ", in " + fileOf(file, *unit.node) + '\n';
  }
  for (const auto& variable : unit.variables()) {
    if (unit.type() == POUType::Function && variable->isParameter()) {
      text += "//   " + declared(file, *variable) + '\n';
    } else if (variable->isLocated() && variable->declared != nullptr) {
      text += fmt::format("//   {} is {}\n", declared(file, *variable),
                          Place::ofLocated(file.names, *variable).load());
    }
  }
  return text;
}

std::string commentOn(const FileContext& file, const ProgramInstance& instance) {
  if (!file.shared) return {};
  return fmt::format("// PROGRAM {} : {}, in {}\n",
                     file.services.configuration.displayName(instance), instance.program->name(),
                     fileOf(file, *instance.node));
}

std::string commentOn(const FileContext& file, const StructType& structure) {
  if (!file.shared) return {};
  return isAnonymous(structure)
             ? fmt::format("// A STRUCT without a name, in {}\n", fileOf(file, structure.declared))
             : fmt::format("// TYPE {} : STRUCT, in {}\n", structure.name(),
                           fileOf(file, structure.declared));
}

std::string commentOn(const FileContext& file, const VarSymbol& variable) {
  if (!file.shared) return {};
  if (variable.declared == nullptr) return "  // the state of an edge detection";
  std::string text = "  // " + declared(file, variable);
  if (variable.placedByInstance) text += ", whose place in device memory this is";
  return text;
}

std::string enumerationComments(const FileContext& file) {
  std::string text;
  for (const auto& owned : file.services.symbols.ownedTypes()) {
    const auto* const enumeration = dynamic_cast<const EnumType*>(owned.get());
    if (enumeration == nullptr || isAnonymous(*enumeration)) continue;
    std::string values;
    for (const auto& value : enumeration->values()) {
      values += fmt::format("{}{} := {}", values.empty() ? "" : ", ", value->name(),
                            textOf(value->value));
    }
    text += fmt::format("// TYPE {} : ({}) {}\n", enumeration->name(), values,
                        displayName(enumeration->base));
  }
  return text.empty() ? text : '\n' + text;
}

}  // namespace refhost
