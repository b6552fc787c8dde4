#include "lsp/uses.h"

#include "refhost/editor/mentions.h"

namespace lsp {

bool Declared::isShared() const {
  using Kind = refhost::SymbolKind;
  switch (kind) {
    case Kind::Temporary:
    case Kind::Setup:
    case Kind::Test:
    case Kind::Teardown:
    case Kind::Configuration:
    case Kind::Resource:
    case Kind::Task:
    case Kind::Instance:
      return false;
    default:
      return true;
  }
}

std::optional<Declared> declaredAt(const Analysed& analysed, vel::TextLocation place) {
  const refhost::ProgramView& view = analysed.session().view();
  const refhost::SymbolId id = view.symbolAt(place);
  if (id == refhost::kNoSymbol) return std::nullopt;
  const refhost::SymbolInfo& symbol = view.symbols()[id];
  const vel::TextLocation begin = symbol.nameRange.begin;
  if (symbol.standard || !symbol.isDeclared() || !analysed.isFile(begin.file())) {
    return std::nullopt;
  }
  const std::string path(analysed.session().sources().path(begin.file()));
  return Declared{path, begin.offset(), symbol.name, symbol.kind};
}

void forEachOtherProgram(Workspace& workspace, const std::string& document,
                         const Declared& declared, const UseProgram& use) {
  if (!declared.isShared()) return;
  const auto mentions = [&](const std::string& path, const std::string& text) {
    return path == declared.path || refhost::canName(text, declared.kind, declared.name);
  };
  workspace.forEachOther(document, declared.path, mentions, [&](const Analysed& analysed) {
    const refhost::SourceManager& sources = analysed.session().sources();
    std::optional<vel::TextLocation> declaration;
    for (std::uint32_t file = 0; file < analysed.fileCount(); ++file) {
      if (sources.path(file) == declared.path) declaration.emplace(file, declared.offset);
    }
    use(analysed, declaration);
  });
}

}  // namespace lsp
