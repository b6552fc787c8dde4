#include "refhost/editor/file_declarations.h"

#include "refhost/editor/outline.h"
#include "refhost/syntax/parser.h"

namespace refhost {

namespace {

FileDeclaration declarationOf(const Symbols& symbols, SymbolId id, const std::string& path) {
  const SymbolInfo& symbol = symbols[id];
  FileDeclaration declaration;
  declaration.kind = symbol.kind;
  declaration.constant = symbol.constant;
  declaration.name = titleOf(symbol);
  declaration.file = path;
  declaration.offset = symbol.nameRange.begin.offset();
  declaration.length = symbol.nameRange.length;
  if (symbol.container != kNoSymbol) declaration.container = symbols[symbol.container].name;
  const bool function = symbol.kind == SymbolKind::Function;
  if (function || symbol.kind == SymbolKind::Global) declaration.type = typeText(symbol);
  if (!function) return declaration;
  for (const SymbolId part : symbols.partsOf(id)) {
    if (isParameter(symbols[part].kind)) {
      declaration.parameters.push_back({symbols[part].name, symbols[part].kind});
    }
  }
  return declaration;
}

}  // namespace

bool FileDeclaration::isShared() const {
  const bool test =
      kind == SymbolKind::Setup || kind == SymbolKind::Test || kind == SymbolKind::Teardown;
  return (isUnit(kind) && !test) || isType(kind) || kind == SymbolKind::Global ||
         kind == SymbolKind::Value;
}

std::vector<FileDeclaration> declarationsOf(const std::string& path, const std::string& text) {
  SourceManager sources;
  Tree tree;
  Diagnostics messages;
  sources.add(path, text);
  parse(sources, 0, tree, messages);
  const Services services(0, {});
  const Symbols symbols(AnalysedProgram{sources, tree, services, {false}});
  std::vector<FileDeclaration> declarations;
  const auto add = [&](SymbolId id) {
    if (symbols[id].nameRange.length == 0 || symbols[id].name.empty()) return;
    declarations.push_back(declarationOf(symbols, id, path));
  };
  for (const SymbolId id : symbols.partsOf(kNoSymbol)) {
    add(id);
    if (symbols[id].kind != SymbolKind::Enumeration) continue;
    for (const SymbolId value : symbols.partsOf(id)) add(value);
  }
  return declarations;
}

}  // namespace refhost
