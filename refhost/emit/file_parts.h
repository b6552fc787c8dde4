// The parts of C files, from which the writers of files put them together.
#pragma once

#include <string>
#include <string_view>

#include "refhost/emit/file_context.h"
#include "refhost/emit/place.h"

namespace refhost {

// The first line of all files, by which velc knows again what it wrote.
constexpr std::string_view kMark = "// Translated from Structured Text by velc.\n";

// The inclusion of the runtime with the program's sizes of device memory.
std::string runtimeInclusion(const DeviceMap& memory);
// The same for a header, which may follow another inclusion of the runtime. `stateBytes` are those
// of hidden state.
std::string runtimeInclusionOfHeader(const DeviceMap& memory, std::uint32_t stateBytes);
// Makes C compilers silent about what concerns the program, not the translation.
std::string silencedWarnings(const FileContext& file);

// `text` with C linkage for C++.
std::string withCLinkage(const std::string& text);

// The static texts of the operators that the file uses. In a shared file they are guarded, since
// headers may have them, too, and their functions internal, since other files may.
std::string staticTexts(const FileContext& file);

// Calls `write` for each unit but the parts of tests, callees before callers as far as their kinds
// tell.
template <typename Write>
void forEachUnit(const SymbolTable& symbols, const Write& write) {
  for (const vel::POUType type :
       {vel::POUType::Function, vel::POUType::FunctionBlock, vel::POUType::Program}) {
    for (const UnitSymbol* const unit : symbols.units()) {
      if (unit->type() == type && !unit->isTest()) write(*unit);
    }
  }
}
// The functions of a unit, of the global variables, of all structures.
void appendUnit(FileContext& file, const UnitSymbol& unit, std::string& out);
void appendStructureInits(FileContext& file, std::string& out);

// A variable of a PROGRAM or a global one, for C code that is appended to the file. `data` is the
// object that contains it unless it has an address.
Place globalPlace(const SymbolNames& names, const std::string& data, const VarSymbol& variable);

}  // namespace refhost
