#include "refhost/editor/navigation.h"

#include "refhost/diagnostics.h"

namespace refhost {

using vel::ASTType;

namespace {

std::optional<SourceRange> declarationOf(const ProgramView& view, SymbolId id) {
  if (id == kNoSymbol) return {};
  const SymbolInfo& symbol = view.symbols()[id];
  const bool open = symbol.isDeclared() && symbol.nameRange.length != 0 &&
                    view.program().isOpenable(symbol.nameRange.begin.file());
  return open ? std::optional(symbol.nameRange) : std::nullopt;
}

// The specification in the declaration of a variable, or of the result of a function.
const ASTNode* specOf(const SymbolInfo& symbol) {
  if (!symbol.isDeclared()) return nullptr;
  if (symbol.kind == SymbolKind::Function) return symbol.node->leaf(Unit::kReturnType);
  if (symbol.kind == SymbolKind::Type) return symbol.node->leaf(1);
  const bool variable = isVariable(symbol.kind) || symbol.kind == SymbolKind::Member;
  return variable ? symbol.node->leaf(VarDecl::kType) : nullptr;
}

}  // namespace

std::optional<SourceRange> definitionAt(const ProgramView& view, vel::TextLocation place) {
  return declarationOf(view, view.symbolAt(place));
}

std::optional<SourceRange> typeDefinitionAt(const ProgramView& view, vel::TextLocation place) {
  const SymbolId id = view.symbolAt(place);
  if (id == kNoSymbol) return {};
  const SymbolInfo& symbol = view.symbols()[id];
  if (symbol.kind == SymbolKind::Value) return declarationOf(view, symbol.container);
  if (symbol.kind == SymbolKind::Instance) {
    const std::string_view program = vel::TreeBuilder::source(*symbol.node->leaf(1)->leaf(0));
    return declarationOf(view, view.symbols().ofType(program));
  }
  const ASTNode* spec = specOf(symbol);
  while (spec != nullptr) {
    const ASTType kind = spec->type();
    if (kind == ASTType::NamedTypeSpec) {
      const char* const name = static_cast<const TypeSpec&>(*spec).name;
      return declarationOf(view, view.symbols().ofType(name));
    }
    if (kind == ASTType::StructTypeSpec || kind == ASTType::EnumTypeSpec) {
      return view.program().isOpenable(spec->pos().file()) ? std::optional(rangeOf(*spec))
                                                           : std::nullopt;
    }
    const bool holds = kind == ASTType::ArrayTypeSpec || kind == ASTType::PointerTypeSpec ||
                       kind == ASTType::ReferenceTypeSpec || isReferenceSpec(*spec);
    spec = holds ? spec->leaf(0) : nullptr;
  }
  return {};
}

std::vector<SourceRange> referencesAt(const ProgramView& view, vel::TextLocation place,
                                      bool withDeclaration) {
  std::vector<SourceRange> ranges;
  const SymbolId id = view.symbolAt(place);
  if (id == kNoSymbol) return ranges;
  for (const Occurrence* const occurrence : view.occurrences().of(id)) {
    if (withDeclaration || !occurrence->declares) ranges.push_back(occurrence->range);
  }
  return ranges;
}

std::vector<Highlight> highlightsAt(const ProgramView& view, vel::TextLocation place) {
  std::vector<Highlight> ranges;
  const SymbolId id = view.symbolAt(place);
  if (id == kNoSymbol) return ranges;
  for (const Occurrence* const occurrence : view.occurrences().of(id)) {
    const bool here = occurrence->range.begin.file() == place.file();
    if (here) ranges.push_back({occurrence->range, occurrence->writes});
  }
  return ranges;
}

}  // namespace refhost
