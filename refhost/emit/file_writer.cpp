#include "refhost/emit/file_writer.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "refhost/emit/configuration_writer.h"
#include "refhost/emit/declarations.h"
#include "refhost/emit/file_names.h"
#include "refhost/emit/function_writer.h"

namespace refhost {

using vel::POUType;

namespace {

// These warnings would concern the program, not the translation: comparisons that are always true,
// variables that are never read, BOOL operators that evaluate both operands, and constants that
// become floats or are compared with others within the macros of operators.
constexpr std::string_view kHead =
    "#include \"velrt.h\"\n"
    "#pragma GCC diagnostic ignored \"-Wtype-limits\"\n"
    "#pragma GCC diagnostic ignored \"-Wunused-but-set-variable\"\n"
    "#pragma GCC diagnostic ignored \"-Wunused-but-set-parameter\"\n"
    "#ifdef __clang__\n"
    "#pragma clang diagnostic ignored \"-Wunknown-warning-option\"\n"
    "#pragma clang diagnostic ignored \"-Wbitwise-instead-of-logical\"\n"
    "#pragma clang diagnostic ignored \"-Wimplicit-const-int-float-conversion\"\n"
    "#pragma clang diagnostic ignored \"-Wtautological-constant-out-of-range-compare\"\n"
    "#else\n"
    "#pragma GCC diagnostic ignored \"-Wbool-compare\"\n"
    "#endif\n";

// Statements of one line of the source share a line of C.
constexpr std::string_view kLinesHead =
    "#pragma GCC diagnostic ignored \"-Wmisleading-indentation\"\n";

// The sizes of device memory that differ from those in the runtime's header.
std::string memoryDefinitions(const DeviceMap& memory) {
  const DeviceMap::Sizes usual;
  std::string text;
  const auto define = [&text](const char* name, std::uint32_t size, std::uint32_t usualSize) {
    if (size != usualSize) text += fmt::format("#define VEL_MEMORY_{} {}\n", name, size);
  };
  define("M", memory.sizes().m, usual.m);
  define("I", memory.sizes().i, usual.i);
  define("Q", memory.sizes().q, usual.q);
  define("STATE", memory.stateBytes(), 0);
  return text;
}

}  // namespace

FileWriter::FileWriter(Services& services, SymbolNames& names, Diagnostics& messages,
                       const SourceManager* sources)
    : names_(names), file_(services, names, messages, sources) {}

std::string FileWriter::text() {
  names_.clear();
  FileNames(file_.services, names_).nameAll();
  std::string units;
  appendUnits(units);
  ConfigurationWriter(file_).append(units);
  std::string out = "// Translated from Structured Text by velc.\n";
  out += memoryDefinitions(file_.services.memory);
  out += kHead;
  if (file_.sources != nullptr) out += kLinesHead;
  appendStaticTexts(out);
  out += structures(names_, file_.services);
  out += prototypes(file_);
  appendStructureInits(out);
  join(out, std::move(units));
  return out;
}

void FileWriter::appendUnits(std::string& out) {
  const SymbolTable& symbols = file_.services.symbols;
  if (symbols.globals() != nullptr) {
    FunctionWriter(file_, symbols.globals()).appendGlobalsInitialisation(out);
  }
  for (const POUType type : {POUType::Function, POUType::FunctionBlock, POUType::Program}) {
    for (const UnitSymbol* const unit : symbols.units()) {
      if (unit->type() != type) continue;
      if (type == POUType::Function) {
        FunctionWriter(file_, unit).appendFunction(out);
      } else {
        FunctionWriter(file_, unit).appendInitialisation(out);
        FunctionWriter(file_, unit).appendBody(out);
      }
    }
  }
}

// Several operators may have the same static text, which is written once.
void FileWriter::appendStaticTexts(std::string& out) const {
  std::vector<std::string_view> written;
  for (const std::string& text : file_.staticTexts) {
    if (text.empty() || std::find(written.begin(), written.end(), text) != written.end()) continue;
    written.push_back(text);
    out += '\n';
    out += text;
    if (text.back() != '\n') out += '\n';
  }
}

void FileWriter::appendStructureInits(std::string& out) {
  for (const auto& owned : file_.services.symbols.ownedTypes()) {
    const auto* const structure = dynamic_cast<const StructType*>(owned.get());
    if (structure == nullptr || !file_.startValues.differFromZero(structure)) continue;
    FunctionWriter(file_, nullptr).appendInitialisation(*structure, out);
  }
}

Place globalPlace(const SymbolNames& names, const std::string& data, const VarSymbol& variable) {
  if (variable.isLocated()) return Place::ofLocated(names, variable);
  std::string text = data + "." + names.of(variable);
  if (variable.placedByInstance) return Place::ofLocated(names, variable, text);
  return {Place::Kind::Object, std::move(text)};
}

}  // namespace refhost
