#include "refhost/editor/rename.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "grammar.h"
#include "hostkit/folding.h"
#include "refhost/editor/mentions.h"
#include "refhost/editor/source_tokens.h"
#include "refhost/prelude/prelude.h"
#include "refhost/syntax/parser.h"

namespace refhost {

namespace {

using Lookup = Occurrence::Lookup;
using vel::equalIgnoringCase;

bool isName(std::string_view text) {
  const std::vector<SourceToken> tokens = sourceTokens(text);
  return tokens.size() == 1 && tokens[0].kind == SourceToken::Kind::Name &&
         tokens[0].span.begin == 0 && tokens[0].span.end == text.size();
}

bool isKeyword(std::string_view text) {
  const std::vector<SourceToken> tokens = sourceTokens(text);
  return tokens.size() == 1 && (tokens[0].kind == SourceToken::Kind::Keyword ||
                                tokens[0].kind == SourceToken::Kind::Truth);
}

bool hasLocalName(SymbolKind kind) { return isVariable(kind) && kind != SymbolKind::Global; }

class Rename {
 public:
  Rename(const ProgramView& view, SymbolId id, std::string_view name)
      : view_(view), symbols_(view.symbols()), id_(id), symbol_(symbols_[id]), name_(name) {}

  Renaming run() {
    Renaming result;
    result.refusal = refusal();
    if (!result.refusal.empty()) return result;
    for (const Occurrence* const occurrence : view_.occurrences().of(id_)) {
      result.edits.push_back({occurrence->range, std::string(name_)});
    }
    if (parses(result.edits)) return result;
    return {fmt::format("{} is a keyword at some of the places", name_), {}};
  }

 private:
  std::string refusal() const {
    if (isKeyword(name_)) return fmt::format("{} is a keyword", name_);
    if (!isName(name_)) return fmt::format("'{}' is not a name", name_);
    if (const std::string broken = brokenFile(); !broken.empty()) {
      return fmt::format("{} has syntax errors", broken);
    }
    if (equalIgnoringCase(name_, symbol_.name)) return {};
    for (const auto& reason : {reserved(), taken(), hidden(), hides()}) {
      if (!reason.empty()) return reason;
    }
    return {};
  }

  // False if the name is a word of the language where it would stand: some are only in contexts.
  bool parses(const std::vector<TextEdit>& edits) const {
    const SourceManager& sources = view_.program().sources;
    for (auto edit = edits.rbegin(); edit != edits.rend();) {
      const std::uint32_t file = edit->range.begin.file();
      std::string text(sources.text(file));
      for (; edit != edits.rend() && edit->range.begin.file() == file; ++edit) {
        text.replace(edit->range.begin.offset(), edit->range.length, edit->text);
      }
      if (view_.program().broken[file]) continue;
      SourceManager changed;
      Tree tree;
      Diagnostics messages;
      parse(changed, static_cast<std::uint32_t>(changed.add("", std::move(text))), tree, messages);
      if (messages.hasErrors()) return false;
    }
    return true;
  }

  // A file in which names may be missing among the occurrences.
  std::string brokenFile() const {
    const AnalysedProgram& program = view_.program();
    for (std::uint32_t file = 0; program.isOpenable(file); ++file) {
      if (!program.broken[file]) continue;
      const std::string_view text = program.sources.text(file);
      const bool own = file == symbol_.nameRange.begin.file();
      const bool named =
          own ? hasName(text, symbol_.name) : canName(text, symbol_.kind, symbol_.name);
      if (named) return program.sources.path(file);
    }
    return {};
  }

  // A local variable that is not called may have the name of a function or a block of the language.
  bool mayHideFunctions() const {
    const auto places = view_.occurrences().of(id_);
    return hasLocalName(symbol_.kind) &&
           std::none_of(places.begin(), places.end(), [](const Occurrence* occurrence) {
             return occurrence->lookup == Lookup::Callee;
           });
  }

  // Members stand behind a '.', so that names of the language do not matter to them.
  std::string reserved() const {
    if (symbol_.kind == SymbolKind::Member) return {};
    const SymbolId standard = symbols_.standard(name_);
    const bool free = mayHideFunctions();
    if (standard != kNoSymbol && !(free && symbols_[standard].kind != SymbolKind::ElementaryType)) {
      const SymbolKind kind = symbols_[standard].kind;
      const char* const what = kind == SymbolKind::Operator         ? "an operator"
                               : kind == SymbolKind::ElementaryType ? "an elementary type"
                                                                    : "a standard function";
      return fmt::format("{} is {}", symbols_[standard].name, what);
    }
    for (const PreludeUnit& unit : preludeUnits()) {
      if (free || !equalIgnoringCase(unit.name, name_)) continue;
      return fmt::format("{} is a standard {}", unit.name, unit.isBlock ? "block" : "function");
    }
    if (equalIgnoringCase(name_, "NULL")) return "NULL is a name of the language";
    const bool enables = isParameter(symbol_.kind) &&
                         (equalIgnoringCase(name_, "EN") || equalIgnoringCase(name_, "ENO"));
    return enables ? fmt::format("{} is an argument that every call has", name_) : "";
  }

  std::string takenBy(SymbolId other) const {
    if (other == kNoSymbol || other == id_) return {};
    const SymbolInfo& owner = symbols_[other];
    const bool inner = owner.container != kNoSymbol;
    return inner ? fmt::format("{} has a {} already", symbols_[owner.container].name, owner.name)
                 : fmt::format("the program has a {} already", owner.name);
  }

  // Another symbol of the name in the same scope.
  std::string taken() const {
    switch (symbol_.kind) {
      case SymbolKind::Member:
      case SymbolKind::Value:
        return takenBy(symbols_.partOf(symbol_.container, name_));
      case SymbolKind::Configuration:
      case SymbolKind::Resource:
      case SymbolKind::Task:
      case SymbolKind::Instance:
        return takenInConfigurations();
      default:
        break;
    }
    if (isVariable(symbol_.kind)) return takenBy(symbols_.variableOf(symbol_.container, name_));
    // Of a function the name is also that of a variable.
    const std::string own = takenBy(symbols_.variableOf(id_, name_));
    return own.empty() ? takenBy(symbols_.ofType(name_)) : own;
  }

  // The names in VAR_CONFIG and behind WITH are looked up in several scopes, so they are kept
  // apart.
  std::string takenInConfigurations() const {
    for (SymbolId other = 0; other < symbols_.count(); ++other) {
      const SymbolInfo& symbol = symbols_[other];
      const bool part =
          symbol.kind >= SymbolKind::Configuration && symbol.kind <= SymbolKind::Instance;
      const bool kept =
          part && (symbol.kind == SymbolKind::Task) == (symbol_.kind == SymbolKind::Task);
      if (kept && equalIgnoringCase(symbol.name, name_)) return takenBy(other);
    }
    return {};
  }

  // True if a name without qualification can be that of the symbol.
  static bool isPlain(const Occurrence& occurrence) {
    return !occurrence.declares &&
           (occurrence.lookup == Lookup::Name || occurrence.lookup == Lookup::Callee);
  }

  // A place that names the symbol where another one of the new name would be found first.
  std::string hidden() const {
    for (const Occurrence* const occurrence : view_.occurrences().of(id_)) {
      const bool path = occurrence->lookup == Lookup::Path;
      if (path ? !rootTaken() : !isPlain(*occurrence)) continue;
      const SymbolId other = path ? rootNamed() : foundFirst(occurrence->unit);
      if (other == kNoSymbol) continue;
      return fmt::format("{} would be hidden by the {} of {}{}", name_, symbols_[other].name,
                         ownerOf(other), placeOf(*occurrence));
    }
    return {};
  }

  // The symbol of the new name that is found in the unit before this one would be.
  SymbolId foundFirst(SymbolId unit) const {
    const SymbolId variable = symbols_.variable(name_, unit);
    const bool global = variable != kNoSymbol && symbols_[variable].kind == SymbolKind::Global;
    const bool local = hasLocalName(symbol_.kind);
    const bool shared = variable != kNoSymbol && local &&
                        symbols_[variable].container == symbols_.setupOf(symbol_.container);
    // A local variable comes before global ones, and one of a TEST before those of its SETUP.
    if (variable != kNoSymbol && !shared && !(local && global)) return variable;
    if (isVariable(symbol_.kind)) return kNoSymbol;
    const bool value = symbol_.kind == SymbolKind::Value;
    return value || isType(symbol_.kind) ? anyValue(unit) : kNoSymbol;
  }

  // A value of the name, be it ambiguous or of the unit only.
  SymbolId anyValue(SymbolId unit) const {
    const SymbolId found = symbols_.value(name_, unit);
    if (found != kNoSymbol) return found;
    for (SymbolId other = 0; other < symbols_.count(); ++other) {
      const SymbolInfo& symbol = symbols_[other];
      if (symbol.kind == SymbolKind::Value && other != id_ &&
          equalIgnoringCase(symbol.name, name_)) {
        return other;
      }
    }
    return kNoSymbol;
  }

  // A place that names another symbol of the new name where this one would be found first.
  std::string hides() const {
    for (const Occurrence& occurrence : view_.occurrences().all()) {
      const SymbolInfo& other = symbols_[occurrence.symbol];
      if (occurrence.symbol == id_ || !equalIgnoringCase(other.name, name_)) continue;
      const bool path = occurrence.lookup == Lookup::Path;
      if (path ? !isRoot() : !isPlain(occurrence) || !comesBefore(other, occurrence)) continue;
      return fmt::format("{} would hide the {} of {}{}", name_, other.name,
                         ownerOf(occurrence.symbol), placeOf(occurrence));
    }
    return {};
  }

  bool comesBefore(const SymbolInfo& other, const Occurrence& occurrence) const {
    const bool result = symbol_.kind == SymbolKind::Function && occurrence.unit == id_;
    if (hasLocalName(symbol_.kind)) {
      const bool own = occurrence.unit == symbol_.container;
      const bool shared =
          occurrence.unit != kNoSymbol && symbols_.setupOf(occurrence.unit) == symbol_.container;
      // A TEST finds its own variables before those of its SETUP.
      return own || (shared && !(hasLocalName(other.kind) && other.container == occurrence.unit));
    }
    if (symbol_.kind == SymbolKind::Global) return !hasLocalName(other.kind);
    if (symbol_.kind == SymbolKind::Value) {
      return other.kind == SymbolKind::Value || isType(other.kind);
    }
    return result;
  }

  // VAR_CONFIG: the first names of a path are instances, resources, programs or global variables.
  bool isRoot() const {
    return symbol_.kind == SymbolKind::Instance || symbol_.kind == SymbolKind::Resource ||
           symbol_.kind == SymbolKind::Program || symbol_.kind == SymbolKind::Global;
  }
  bool rootTaken() const { return rootNamed() != kNoSymbol; }
  SymbolId rootNamed() const {
    for (SymbolId other = 0; other < symbols_.count(); ++other) {
      const SymbolInfo& symbol = symbols_[other];
      const bool root = symbol.kind == SymbolKind::Instance ||
                        symbol.kind == SymbolKind::Resource || symbol.kind == SymbolKind::Program ||
                        symbol.kind == SymbolKind::Global;
      if (root && other != id_ && equalIgnoringCase(symbol.name, name_)) return other;
    }
    return kNoSymbol;
  }

  std::string ownerOf(SymbolId id) const {
    const SymbolId container = symbols_[id].container;
    return container != kNoSymbol ? symbols_[container].name : "the program";
  }

  std::string placeOf(const Occurrence& occurrence) const {
    const SourceManager& sources = view_.program().sources;
    return fmt::format(" ({}:{})", sources.path(occurrence.range.begin.file()),
                       sources.position(occurrence.range.begin).line);
  }

  const ProgramView& view_;
  const Symbols& symbols_;
  SymbolId id_;
  const SymbolInfo& symbol_;
  std::string_view name_;
};

}  // namespace

Renameable renameableAt(const ProgramView& view, vel::TextLocation place) {
  Renameable result;
  const Occurrence* const found = view.occurrences().at(place);
  if (found == nullptr) {
    result.refusal = "there is no name here that the program declares";
    return result;
  }
  const SymbolInfo& symbol = view.symbols()[found->symbol];
  if (symbol.standard || !symbol.isDeclared()) {
    result.refusal = fmt::format("{} is declared by the language", symbol.name);
  } else if (!isName(symbol.name)) {
    result.refusal = fmt::format("{} is an address", symbol.name);
  } else {
    result.range = found->range;
    result.name = std::string(view.program()
                                  .sources.text(place.file())
                                  .substr(found->range.begin.offset(), found->range.length));
  }
  return result;
}

Renaming renamed(const ProgramView& view, vel::TextLocation place, std::string_view name) {
  Renaming result;
  result.refusal = renameableAt(view, place).refusal;
  if (!result.refusal.empty()) return result;
  return Rename(view, view.symbolAt(place), name).run();
}

}  // namespace refhost
