#include "refhost/emit/file_parts.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/ast_node_helper.h"
#include "refhost/emit/function_writer.h"
#include "refhost/emit/static_texts.h"

namespace refhost {

using vel::POUType;

namespace {

// Calls `area` with the name, the size and the runtime's own size of each area of device memory.
template <typename Area>
void forEachArea(const DeviceMap& memory, std::uint32_t stateBytes, const Area& area) {
  const DeviceMap::Sizes usual;
  area("M", memory.sizes().m, usual.m);
  area("I", memory.sizes().i, usual.i);
  area("Q", memory.sizes().q, usual.q);
  area("STATE", stateBytes, std::uint32_t{0});
}

}  // namespace

std::string runtimeInclusion(const DeviceMap& memory) {
  std::string text;
  forEachArea(memory, memory.stateBytes(),
              [&](const char* name, std::uint32_t size, std::uint32_t usual) {
                if (size != usual) text += fmt::format("#define VEL_MEMORY_{} {}\n", name, size);
              });
  return text + "#include \"velrt.h\"\n";
}

std::string runtimeInclusionOfHeader(const DeviceMap& memory, std::uint32_t stateBytes) {
  std::string definitions;
  std::string differences;
  forEachArea(memory, stateBytes, [&](const char* name, std::uint32_t size, std::uint32_t usual) {
    if (size != usual) {
      definitions +=
          fmt::format("#ifndef VEL_MEMORY_{0}\n#define VEL_MEMORY_{0} {1}\n#endif\n", name, size);
    }
    // More hidden state than its own does not hurt a program.
    differences += fmt::format("{}VEL_MEMORY_{} {} {}", differences.empty() ? "" : " || ", name,
                               name == std::string_view("STATE") ? "<" : "!=", size);
  });
  return fmt::format(
      "{}#include \"velrt.h\"\n#if {}\n#error \"velrt.h was included with other sizes of device "
      "memory\"\n#endif\n",
      definitions, differences);
}

// These warnings would concern the program, not the translation: comparisons that are always true,
// variables that are never read, BOOL operators that evaluate both operands, and constants that
// become floats or are compared with others within the macros of operators.
std::string silencedWarnings(const FileContext& file) {
  std::string text =
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
  if (file.lines) text += "#pragma GCC diagnostic ignored \"-Wmisleading-indentation\"\n";
  return text;
}

std::string withCLinkage(const std::string& text) {
  return fmt::format(
      "\n#ifdef __cplusplus\nextern \"C\" {{\n#endif\n{}\n#ifdef __cplusplus\n}}\n#endif\n", text);
}

std::string staticTexts(const FileContext& file) {
  std::string out;
  std::vector<std::string_view> written;  // several operators may have the same text
  for (const std::string& text : file.staticTexts) {
    if (text.empty() || std::find(written.begin(), written.end(), text) != written.end()) continue;
    written.push_back(text);
    const char* const end = text.back() == '\n' ? "" : "\n";
    out += !file.shared
               ? '\n' + text + end
               : fmt::format("\n#ifndef VEL_STATIC_{0}\n#define VEL_STATIC_{0}\n{1}{2}{3}#endif\n",
                             AstNodeHelper::opExpTextToMd5HexText("", text),
                             internalPrototypes(text), text, end);
  }
  return out;
}

void appendUnit(FileContext& file, const UnitSymbol& unit, std::string& out) {
  if (&unit == file.services.symbols.globals()) {
    FunctionWriter(file, &unit).appendGlobalsInitialisation(out);
  } else if (unit.type() == POUType::Function) {
    FunctionWriter(file, &unit).appendFunction(out);
  } else {
    FunctionWriter(file, &unit).appendInitialisation(out);
    FunctionWriter(file, &unit).appendBody(out);
  }
}

void appendStructureInits(FileContext& file, std::string& out) {
  for (const auto& owned : file.services.symbols.ownedTypes()) {
    const auto* const structure = dynamic_cast<const StructType*>(owned.get());
    if (structure == nullptr || !file.startValues.differFromZero(structure)) continue;
    FunctionWriter(file, nullptr).appendInitialisation(*structure, out);
  }
}

Place globalPlace(const SymbolNames& names, const std::string& data, const VarSymbol& variable) {
  if (variable.isLocated()) return Place::ofLocated(names, variable);
  std::string text = data + "." + names.of(variable);
  if (variable.placedByInstance) return Place::ofLocated(names, variable, text);
  return {Place::Kind::Object, std::move(text)};
}

}  // namespace refhost
