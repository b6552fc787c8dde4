#include "refhost/editor/outline.h"

#include <algorithm>
#include <tuple>

#include "hostkit/folding.h"
#include "hostkit/literal.h"

namespace refhost {

using vel::TreeBuilder;

std::string inOneLine(std::string_view source) {
  std::string line;
  for (const char c : source) {
    const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
    if (blank && (line.empty() || line.back() == ' ')) continue;
    line += blank ? ' ' : c;
  }
  return line;
}

std::string titleOf(const SymbolInfo& symbol) {
  hostkit::LiteralValue title;
  const bool quoted = symbol.kind == SymbolKind::Test &&
                      parseLiteral(symbol.name, title) == hostkit::LiteralError::None;
  return quoted ? title.text : symbol.name;
}

std::string typeText(const SymbolInfo& symbol) {
  const ASTNode* spec = nullptr;
  switch (symbol.kind) {
    case SymbolKind::Function:
      spec = symbol.node->leaf(Unit::kReturnType);
      break;
    case SymbolKind::Instance:
      return std::string(TreeBuilder::source(*symbol.node->leaf(1)->leaf(0)));
    case SymbolKind::Type:
    case SymbolKind::Value:
      spec = symbol.node->leaf(1);
      break;
    default:
      if (isVariable(symbol.kind) || symbol.kind == SymbolKind::Member) {
        spec = symbol.node->leaf(VarDecl::kType);
      }
      break;
  }
  if (spec == nullptr) return {};
  if (spec->type() == vel::ASTType::StructTypeSpec) return "STRUCT";
  return inOneLine(TreeBuilder::source(*spec));
}

namespace {

bool isIn(const SymbolInfo& symbol, std::uint32_t file) {
  return !symbol.standard && symbol.isDeclared() && !symbol.name.empty() &&
         symbol.nameRange.begin.file() == file;
}

bool contains(const SourceRange& whole, const SourceRange& part) {
  return whole.begin.file() == part.begin.file() && whole.begin.offset() <= part.begin.offset() &&
         part.begin.offset() + part.length <= whole.begin.offset() + whole.length;
}

OutlineItem itemOf(const ProgramView& view, SymbolId id, std::uint32_t file) {
  const Symbols& symbols = view.symbols();
  const SymbolInfo& symbol = symbols[id];
  OutlineItem item{titleOf(symbol), typeText(symbol), symbol.kind, symbol.constant,
                   symbol.extent,   symbol.nameRange, {}};
  for (const SymbolId part : symbols.partsOf(id)) {
    if (isIn(symbols[part], file)) item.parts.push_back(itemOf(view, part, file));
  }
  return item;
}

void sort(std::vector<OutlineItem>& items) {
  std::stable_sort(items.begin(), items.end(), [](const OutlineItem& a, const OutlineItem& b) {
    return a.nameRange.begin.offset() < b.nameRange.begin.offset();
  });
}

// Puts a global variable into the unit, the configuration or the resource that declares it.
void addGlobal(OutlineItem global, std::vector<OutlineItem>& items) {
  for (OutlineItem& item : items) {
    const bool declares = !isVariable(item.kind) && contains(item.range, global.range);
    if (declares) return addGlobal(std::move(global), item.parts);
  }
  items.push_back(std::move(global));
  sort(items);
}

// True if the letters of `query` stand in `name` in this order.
bool matches(std::string_view name, std::string_view query) {
  for (const char c : name) {
    if (query.empty()) break;
    if (hostkit::toLower(c) == hostkit::toLower(query[0])) query.remove_prefix(1);
  }
  return query.empty();
}

// In the order in which the results of a search are shown.
template <typename NameOf, typename Found>
void sortFound(std::vector<Found>& found, std::string_view query, NameOf nameOf) {
  const auto rank = [&](const Found& symbol) {
    const std::string_view name = nameOf(symbol);
    return std::tuple(!vel::equalIgnoringCase(name.substr(0, query.size()), query), name.size());
  };
  std::stable_sort(found.begin(), found.end(),
                   [&](const Found& a, const Found& b) { return rank(a) < rank(b); });
}

}  // namespace

std::vector<OutlineItem> outlineOf(const ProgramView& view, std::uint32_t file) {
  const Symbols& symbols = view.symbols();
  std::vector<OutlineItem> items;
  std::vector<OutlineItem> globals;
  for (SymbolId id = 0; id < symbols.count(); ++id) {
    const SymbolInfo& symbol = symbols[id];
    if (symbol.container != kNoSymbol || !isIn(symbol, file)) continue;
    const bool global = symbol.kind == SymbolKind::Global;
    (global ? globals : items).push_back(itemOf(view, id, file));
  }
  sort(items);
  for (OutlineItem& global : globals) addGlobal(std::move(global), items);
  return items;
}

std::vector<FoundSymbol> findSymbols(const ProgramView& view, std::string_view query) {
  const Symbols& symbols = view.symbols();
  std::vector<FoundSymbol> found;
  for (SymbolId id = 0; id < symbols.count(); ++id) {
    const SymbolInfo& symbol = symbols[id];
    if (symbol.standard || symbol.name.empty() || symbol.nameRange.length == 0) continue;
    if (query.empty() ? symbol.container != kNoSymbol : !matches(symbol.name, query)) continue;
    const bool inner = symbol.container != kNoSymbol;
    found.push_back({id, titleOf(symbol), inner ? titleOf(symbols[symbol.container]) : "",
                     symbol.kind, symbol.nameRange});
  }
  sortFound(found, query,
            [](const FoundSymbol& symbol) -> std::string_view { return symbol.name; });
  return found;
}

std::vector<const FileDeclaration*> findDeclarations(
    const std::vector<const FileDeclaration*>& declarations, std::string_view query) {
  std::vector<const FileDeclaration*> found;
  for (const FileDeclaration* const declaration : declarations) {
    const bool inner = !declaration->container.empty();
    if (query.empty() ? inner : !matches(declaration->name, query)) continue;
    found.push_back(declaration);
  }
  sortFound(found, query, [](const FileDeclaration* declaration) -> std::string_view {
    return declaration->name;
  });
  return found;
}

}  // namespace refhost
