#include "refhost/emit/split_writer.h"

#include <fmt/format.h>

#include <utility>

#include "refhost/emit/configuration_writer.h"
#include "refhost/emit/declaration_comments.h"
#include "refhost/emit/declarations.h"
#include "refhost/emit/file_names.h"
#include "refhost/emit/file_parts.h"
#include "refhost/emit/line_directives.h"

namespace refhost {

using vel::POUType;

std::vector<TranslatedFile> SplitWriter::files() {
  names_.clear();
  FileNames(file_.services, names_, true).nameAll();
  const SplitNames files(file_);
  files_ = &files;
  addProgram();
  const SymbolTable& symbols = file_.services.symbols;
  if (symbols.globals() != nullptr) addUnit(*symbols.globals());
  forEachUnit(symbols, [&](const UnitSymbol& unit) {
    unit.standard ? addStandardUnit(unit) : addUnit(unit);
  });
  addConfiguration();
  for (const auto& owned : symbols.ownedTypes()) {
    if (const auto* const structure = dynamic_cast<const StructType*>(owned.get())) {
      addStructure(*structure);
    }
  }
  addStructureInits();
  addAll();
  return std::move(written_);
}

namespace {

// A step that hides how many states there are from all files but those of the PROGRAMs that have
// them.
constexpr std::uint32_t kStateStep = 256;

// The variables on which the interface of a unit depends.
std::vector<const VarSymbol*> interfaceVariables(const UnitSymbol& unit) {
  const bool function = unit.type() == POUType::Function;
  std::vector<const VarSymbol*> result;
  for (const auto& variable : unit.variables()) {
    const bool shown =
        function ? variable->isParameter() || variable->role == Role::Result : variable->isKept();
    if (shown) result.push_back(variable.get());
  }
  return result;
}

}  // namespace

void SplitWriter::addProgram() {
  const DeviceMap& memory = file_.services.memory;
  const std::uint32_t stateBytes = (memory.stateBytes() / kStateStep + 1) * kStateStep;
  std::string text(kMark);
  text += runtimeInclusionOfHeader(memory, stateBytes);
  written_.push_back({std::string(SplitNames::kProgram) + ".h", std::move(text)});
}

void SplitWriter::addStructure(const StructType& type) {
  Requirements needs(file_, *files_, files_->of(type));
  needs.variables(type.members());
  addHeader(files_->of(type), needs,
            needs.declarations() + structure(file_, type) + prototypes(file_, type));
}

std::string SplitWriter::interfaceOf(const UnitSymbol& unit) {
  std::string text =
      unit.type() == POUType::Function ? '\n' + commentOn(file_, unit) : structure(file_, unit);
  if (hasData(unit)) text += dataDeclaration(file_, unit);
  return text + prototypes(file_, unit);
}

void SplitWriter::addUnit(const UnitSymbol& unit) {
  const std::string& name = files_->of(unit);
  const Code functions = code([&](std::string& out) { appendUnit(file_, unit, out); });
  addSource(name, functions, hasData(unit) ? '\n' + dataDefinition(file_, unit) : "");
  Requirements needs(file_, *files_, name);
  needs.variables(interfaceVariables(unit));
  addHeader(name, needs, needs.declarations() + interfaceOf(unit));
}

// All files that use it have its functions, so that C compilers can inline them.
void SplitWriter::addStandardUnit(const UnitSymbol& unit) {
  const std::string& name = files_->of(unit);
  const Code functions = code([&](std::string& out) { appendUnit(file_, unit, out); });
  Requirements needs(file_, *files_, name);
  needs.variables(interfaceVariables(unit));
  needs.named(functions.named);
  const std::string type =
      unit.type() == POUType::Function ? "" : structure(file_, *std::as_const(unit).fbType());
  const std::string text = fmt::format(
      "{}\n#ifndef __cplusplus\n#pragma GCC diagnostic push\n{}{}{}#pragma GCC diagnostic pop\n"
      "#endif\n",
      type, silencedWarnings(file_), '\n' + prototypes(file_, unit), functions.text);
  addHeader(name, needs, needs.declarations() + text);
}

void SplitWriter::addConfiguration() {
  const std::string& name = files_->configuration();
  if (name.empty()) return;
  const auto& instances = file_.services.configuration.instances;
  std::string definitions = "\n";
  std::string declarations;
  Requirements needs(file_, *files_, name);
  for (const ProgramInstance& instance : instances) {
    needs.include(files_->of(*instance.program));
    definitions += dataDefinition(file_, instance);
    declarations += '\n' + commentOn(file_, instance) + dataDeclaration(file_, instance) +
                    prototypes(file_, instance);
  }
  addSource(name, code([&](std::string& out) { ConfigurationWriter(file_).append(out); }),
            definitions);
  addHeader(name, needs, declarations + '\n' + configurationPrototypes(file_));
}

void SplitWriter::addStructureInits() {
  const Code functions = code([&](std::string& out) { appendStructureInits(file_, out); });
  if (!functions.text.empty()) addSource(std::string(SplitNames::kTypes), functions, "");
}

void SplitWriter::addAll() {
  std::string text(kMark);
  text += enumerationComments(file_);
  for (const TranslatedFile& file : written_) {
    if (file.name.back() == 'h') text += fmt::format("#include \"{}\"\n", file.name);
  }
  written_.push_back({std::string(SplitNames::kAll) + ".h", std::move(text)});
}

template <typename Write>
SplitWriter::Code SplitWriter::code(const Write& write) {
  Code result;
  file_.beginFile();
  names_.recordIn(&result.named);
  write(result.text);
  names_.recordIn(nullptr);
  result.text.insert(0, staticTexts(file_));
  return result;
}

void SplitWriter::addHeader(const std::string& name, const Requirements& needs,
                            const std::string& text) {
  written_.push_back(
      {name + ".h", fmt::format("{}#ifndef VEL_H_{}\n#define VEL_H_{}\n\n#include \"{}.h\"\n{}{}\n"
                                "#endif\n",
                                kMark, name, name, SplitNames::kProgram, needs.inclusions(),
                                withCLinkage(text))});
}

void SplitWriter::addSource(const std::string& name, const Code& code,
                            const std::string& definitions) {
  Requirements needs(file_, *files_, {});
  needs.named(code.named);
  needs.include(name == SplitNames::kTypes ? std::string(SplitNames::kProgram) : name);
  std::string text(kMark);
  text += needs.inclusions();
  text += silencedWarnings(file_);
  text += needs.declarations();
  text += definitions;
  text += code.text;
  if (file_.lines) text = withOwnLines(text, {});
  written_.push_back({name + ".c", std::move(text)});
}

}  // namespace refhost
