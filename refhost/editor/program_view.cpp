#include "refhost/editor/program_view.h"

#include <utility>

namespace refhost {

ProgramView::ProgramView(AnalysedProgram program)
    : program_(std::move(program)), symbols_(program_), occurrences_(program_, symbols_) {}

ProgramView::~ProgramView() = default;

SymbolId ProgramView::symbolAt(vel::TextLocation place) const {
  const Occurrence* const found = occurrences_.at(place);
  return found != nullptr ? found->symbol : kNoSymbol;
}

SymbolId ProgramView::unitAt(vel::TextLocation place) const {
  for (SymbolId id = 0; id < symbols_.count(); ++id) {
    const SymbolInfo& symbol = symbols_[id];
    if (!isUnit(symbol.kind) || symbol.standard) continue;
    const vel::TextLocation begin = symbol.extent.begin;
    const bool contains = begin.file() == place.file() && begin.offset() <= place.offset() &&
                          place.offset() <= begin.offset() + symbol.extent.length;
    if (contains) return id;
  }
  return kNoSymbol;
}

}  // namespace refhost
