#include "refhost/emit/file_writer.h"

#include <fmt/format.h>

#include <cctype>
#include <utility>

#include "refhost/emit/configuration_writer.h"
#include "refhost/emit/declaration_comments.h"
#include "refhost/emit/declarations.h"
#include "refhost/emit/file_names.h"
#include "refhost/emit/file_parts.h"
#include "refhost/emit/function_body.h"

namespace refhost {

using vel::POUType;

FileWriter::FileWriter(Services& services, const SourceManager& sources, SymbolNames& names,
                       Diagnostics& messages, bool lines, std::string header)
    : names_(names),
      file_(services, sources, names, messages, {!header.empty(), lines}),
      header_(std::move(header)) {}

std::string FileWriter::text() {
  names_.clear();
  FileNames(file_.services, names_, file_.shared).nameAll();
  const SymbolTable& symbols = file_.services.symbols;
  std::string units;
  if (symbols.globals() != nullptr) appendUnit(file_, *symbols.globals(), units);
  forEachUnit(symbols, [&](const UnitSymbol& unit) { appendUnit(file_, unit, units); });
  ConfigurationWriter(file_).append(units);
  // Before the static texts are written, to which the calls in the tests add.
  tests_ = TestWriter(file_).texts();
  std::string out(kMark);
  out += file_.shared ? fmt::format("#include \"{}\"\n", header_)
                      : runtimeInclusion(file_.services.memory);
  out += silencedWarnings(file_);
  out += staticTexts(file_);
  out += declarations();
  appendStructureInits(file_, out);
  join(out, std::move(units));
  return out;
}

// What precedes the functions. With a header, that is only what the header does not declare.
std::string FileWriter::declarations() {
  if (!file_.shared) return structures(file_) + prototypes(file_);
  std::string out = dataDefinitions(file_);
  std::string internal;
  for (const UnitSymbol* const unit : file_.services.symbols.units()) {
    if (unit->standard) internal += prototypes(file_, *unit);
  }
  if (!internal.empty()) out += '\n' + internal;
  return out;
}

std::string FileWriter::headerText() {
  std::string text = enumerationComments(file_);
  const auto type = [&](const vel::SymbolDataType& each) {
    text += structure(file_, each);
    if (const auto* const structure = dynamic_cast<const StructType*>(&each)) {
      text += prototypes(file_, *structure);
    }
    const auto* const instance = dynamic_cast<const InstanceType*>(&each);
    if (instance != nullptr && !instance->unit->standard)
      text += prototypes(file_, *instance->unit);
  };
  const auto unit = [&](const UnitSymbol& each) {
    const bool function = each.type() == POUType::Function;
    if (function && !each.standard) text += '\n' + commentOn(file_, each) + prototypes(file_, each);
    if (each.type() != POUType::Program) return;
    text += structure(file_, each);
    if (hasData(each)) text += dataDeclaration(file_, each);
    text += prototypes(file_, each);
  };
  declareInOrder(file_, {type, unit});
  for (const ProgramInstance& instance : file_.services.configuration.instances) {
    text += '\n' + commentOn(file_, instance) + dataDeclaration(file_, instance) +
            prototypes(file_, instance);
  }
  if (!names_.configuration.init.empty()) text += '\n' + configurationPrototypes(file_);

  std::string guard = "VEL_HEADER_" + header_.substr(header_.find_last_of('/') + 1);
  for (char& c : guard) {
    if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
  }
  const DeviceMap& memory = file_.services.memory;
  return fmt::format("{}#ifndef {}\n#define {}\n\n{}{}\n#endif\n", kMark, guard, guard,
                     runtimeInclusionOfHeader(memory, memory.stateBytes()), withCLinkage(text));
}

}  // namespace refhost
