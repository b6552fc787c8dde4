// What the files declare, as trees for one file and as a list to search in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "refhost/editor/file_declarations.h"
#include "refhost/editor/program_view.h"

namespace refhost {

struct OutlineItem {
  std::string name;    // of a test its title, without quotes
  std::string detail;  // its type as written, on one line; empty for none
  SymbolKind kind = SymbolKind::Variable;
  bool constant = false;
  SourceRange range;      // the whole declaration
  SourceRange nameRange;  // within it
  std::vector<OutlineItem> parts;
};

// The declarations of a file in their order: units with their variables, types with their members
// or values, tests, global variables, configurations.
std::vector<OutlineItem> outlineOf(const ProgramView& view, std::uint32_t file);

// The name of a symbol; of a test its title, without quotes.
std::string titleOf(const SymbolInfo& symbol);
// The text with one blank for each run of blanks and line breaks.
std::string inOneLine(std::string_view source);
// The type of a variable, a member, an instance or a FUNCTION's result as written, on one line;
// empty for none.
std::string typeText(const SymbolInfo& symbol);

struct FoundSymbol {
  SymbolId symbol;
  std::string name;
  std::string container;  // the name of what declares it; empty for none
  SymbolKind kind;
  SourceRange range;  // of the name
};

// Symbols of all files whose names contain the letters of the query in order, regardless of letter
// case: those that begin with it first, then shorter names. For an empty query all but those that
// are declared within others.
std::vector<FoundSymbol> findSymbols(const ProgramView& view, std::string_view query);
// The same for declarations of files, none of which is null.
std::vector<const FileDeclaration*> findDeclarations(
    const std::vector<const FileDeclaration*>& declarations, std::string_view query);

}  // namespace refhost
