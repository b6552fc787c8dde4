#include "refhost/editor/names_at.h"

#include <algorithm>

#include "refhost/prelude/prelude.h"
#include "refhost/services/derived_types.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

using NameToken = grammar::Parser::token;

bool isUnitVariable(SymbolKind kind) { return isVariable(kind) && kind != SymbolKind::Global; }

}  // namespace

NamesAt::NamesAt(const ProgramView& view, std::uint32_t file,
                 const std::vector<SourceToken>& tokens, const CursorContext& context)
    : view_(view),
      file_(file),
      tokens_(tokens),
      context_(context),
      lexical_(lexicalUnits(view.program().sources.text(file), tokens)),
      prelude_(lexicalUnits(preludeText(), sourceTokens(preludeText()))) {
  findUnit();
  collect();
}

void NamesAt::findUnit() {
  const std::vector<CodeBlock>& blocks = context_.code.blocks;
  if (blocks.empty() || !blocks.front().construct->isProgramUnit()) return;
  const std::uint32_t begin = context_.code.tokens[blocks.front().token].span.begin;
  const Symbols& symbols = view_.symbols();
  for (SymbolId id = 0; id < symbols.count(); ++id) {
    const SymbolInfo& symbol = symbols[id];
    const bool here = isUnit(symbol.kind) && !symbol.standard &&
                      symbol.extent.begin.file() == file_ && symbol.extent.begin.offset() == begin;
    if (here) unit_ = id;
  }
  const auto own = std::find_if(lexical_.begin(), lexical_.end(),
                                [begin](const LexicalUnit& unit) { return unit.begin == begin; });
  if (own != lexical_.end()) own_ = &*own;
}

void NamesAt::add(std::string_view name, SymbolId id, const LexicalVariable* lexical) {
  if (name.empty() || name[0] == '%') return;
  if (byName_.emplace(name, variables_.size()).second) variables_.push_back({name, id, lexical});
}

void NamesAt::collect() {
  const Symbols& symbols = view_.symbols();
  if (unit_ != kNoSymbol) {
    for (const SymbolId id : symbols.partsOf(unit_)) {
      if (isUnitVariable(symbols[id].kind)) add(symbols[id].name, id, nullptr);
    }
    if (symbols.variableOf(unit_, symbols[unit_].name) == unit_) {
      add(symbols[unit_].name, unit_, nullptr);
    }
  }
  if (own_ != nullptr) {
    for (const LexicalVariable& variable : own_->variables) {
      const bool global =
          variable.section == NameToken::VAR_GLOBAL || variable.section == NameToken::VAR_EXTERNAL;
      const SymbolId id = global ? symbols.global(variable.name) : kNoSymbol;
      add(variable.name, id, &variable);
    }
    if (!own_->result.empty()) add(own_->name, kNoSymbol, nullptr);
  }
  const SymbolId setup = unit_ != kNoSymbol ? symbols.setupOf(unit_) : kNoSymbol;
  if (setup != kNoSymbol) {
    for (const SymbolId id : symbols.partsOf(setup)) {
      const SymbolKind kind = symbols[id].kind;
      const bool visible = isUnitVariable(kind) && kind != SymbolKind::Temporary;
      if (visible) add(symbols[id].name, id, nullptr);
    }
  }
  for (const SymbolId id : symbols.partsOf(kNoSymbol)) {
    if (symbols[id].kind == SymbolKind::Global) add(symbols[id].name, id, nullptr);
  }
}

const NamedPart* NamesAt::variable(std::string_view name) const {
  const auto found = byName_.find(name);
  return found != byName_.end() ? &variables_[found->second] : nullptr;
}

std::vector<SymbolId> NamesAt::values() const {
  std::vector<SymbolId> all;
  const Symbols& symbols = view_.symbols();
  const auto addOf = [&](SymbolId owner) {
    for (const SymbolId part : symbols.partsOf(owner)) {
      const bool plain = symbols[part].kind == SymbolKind::Value &&
                         symbols.value(symbols[part].name, unit_) == part;
      if (plain && variable(symbols[part].name) == nullptr) all.push_back(part);
    }
  };
  for (const NamedPart& part : variables_) {
    if (part.id != kNoSymbol) addOf(part.id);
  }
  for (const SymbolId id : symbols.partsOf(kNoSymbol)) {
    if (isType(symbols[id].kind)) addOf(id);
  }
  return all;
}

const LexicalUnit* NamesAt::lexicalUnit(std::string_view name) const {
  for (const std::vector<LexicalUnit>* const units : {&lexical_, &prelude_}) {
    for (const LexicalUnit& unit : *units) {
      const bool test = !unit.name.empty() && unit.name[0] == '\'';
      if (!test && !unit.name.empty() && equalIgnoringCase(unit.name, name)) return &unit;
    }
  }
  return nullptr;
}

PlaceType NamesAt::typeOf(const NamedPart& part) const {
  if (part.id != kNoSymbol) {
    if (const vel::SymbolDataType* const type = view_.symbols().dataType(part.id))
      return {type, {}};
  }
  if (part.id != kNoSymbol && part.id == unit_) {
    const UnitSymbol* const unit = view_.program().services.symbols.unit(part.name);
    return {unit != nullptr && unit->result != nullptr ? unit->result->dataType() : nullptr, {}};
  }
  if (part.lexical != nullptr) return typeNamed(part.lexical->type);
  // A declaration with an error, of which the analysis has no variable.
  const LexicalVariable* declared = nullptr;
  if (own_ != nullptr) {
    for (const LexicalVariable& variable : own_->variables) {
      if (equalIgnoringCase(variable.name, part.name)) declared = &variable;
    }
  }
  if (declared != nullptr) return typeNamed(declared->type);
  const bool result = own_ != nullptr && equalIgnoringCase(own_->name, part.name);
  return result ? typeNamed(own_->result) : PlaceType{};
}

PlaceType NamesAt::typeNamed(std::string_view type) const {
  PlaceType place;
  const std::vector<SourceToken> tokens = sourceTokens(type);
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const std::string_view word =
        type.substr(tokens[i].span.begin, tokens[i].span.end - tokens[i].span.begin);
    if (tokens[i].token == NameToken::ARRAY) {
      place.around += '[';
      while (i < tokens.size() && tokens[i].token != NameToken::OF) ++i;
    } else if (tokens[i].token == NameToken::POINTER || tokens[i].token == NameToken::REF_TO) {
      place.around += '^';
    } else if (tokens[i].token != NameToken::TO && !equalIgnoringCase(word, "REFERENCE")) {
      const SymbolTable& symbols = view_.program().services.symbols;
      place.type = symbols.dataType(word);
      const UnitSymbol* const unit = place.type == nullptr ? symbols.unit(word) : nullptr;
      if (unit != nullptr) {
        place.type =
            unit->type() == vel::POUType::FunctionBlock ? unit->fbType() : unit->instanceType();
      }
      if (place.type == nullptr) place.block = lexicalUnit(word);
      break;
    }
  }
  return place;
}

PlaceType NamesAt::elementOf(PlaceType place) {
  if (!place.around.empty()) {
    place.around.erase(0, 1);
    return place;
  }
  if (const auto* const array = dynamic_cast<const ArrayType*>(place.type)) {
    return {array->element, {}};
  }
  if (const OpenArrayType* const open = asOpenArray(place.type)) return {open->element, {}};
  return targetOf(place);
}

PlaceType NamesAt::targetOf(PlaceType place) {
  if (!place.around.empty()) {
    if (place.around[0] != '^') return {};
    place.around.erase(0, 1);
    return place;
  }
  const auto* const pointer = dynamic_cast<const PointerType*>(place.type);
  return {pointer != nullptr ? pointer->target : nullptr, {}};
}

PlaceType NamesAt::typeOfAccess(std::size_t first, std::size_t last) const {
  const std::vector<SourceToken>& tokens = context_.code.tokens;
  if (first > last || last >= tokens.size()) return {};
  const auto begin = tokens.begin() + static_cast<std::ptrdiff_t>(first);
  return typeOfTokens({begin, begin + static_cast<std::ptrdiff_t>(last - first + 1)});
}

PlaceType NamesAt::typeOfTokens(const std::vector<SourceToken>& access) const {
  const std::string_view text = view_.program().sources.text(file_);
  const auto textOf = [text](const SourceToken& token) {
    return text.substr(token.span.begin, token.span.end - token.span.begin);
  };
  const NamedPart* const root = access.empty() ? nullptr : variable(textOf(access[0]));
  if (root == nullptr) return {};
  PlaceType place = typeOf(*root);
  for (std::size_t i = 1; i < access.size(); ++i) {
    const int token = access[i].token;
    if (token == '[') {
      int depth = 0;
      for (; i + 1 < access.size(); ++i) {
        const int part = access[i].token;
        if (part == '[' || part == '(') ++depth;
        if (part == ']' || part == ')') --depth;
        if (depth == 0) break;
      }
      place = elementOf(place);
    } else if (token == '^') {
      place = targetOf(place);
    } else if (token != '.') {
      place = memberNamed(place, textOf(access[i]));
    }
  }
  return place;
}

SymbolId NamesAt::enumerationOf(const PlaceType& place) const {
  const auto* const type = dynamic_cast<const EnumType*>(place.type);
  if (type == nullptr || type->values().empty() || !place.around.empty()) return kNoSymbol;
  const SymbolId value = symbols().of(type->values()[0].get());
  return value != kNoSymbol ? symbols()[value].container : kNoSymbol;
}

PlaceType NamesAt::memberNamed(const PlaceType& place, std::string_view name) const {
  if (!place.around.empty()) return {};
  if (place.block == nullptr) {
    const VarSymbol* const member = memberOf(place.type, name);
    return {member != nullptr ? member->dataType() : nullptr, {}};
  }
  for (const LexicalVariable& variable : place.block->variables) {
    if (equalIgnoringCase(variable.name, name)) return typeNamed(variable.type);
  }
  return {};
}

std::vector<NamedPart> NamesAt::membersOf(const PlaceType& place) const {
  std::vector<NamedPart> all;
  if (!place.around.empty()) return all;
  if (place.block != nullptr) {
    for (const LexicalVariable& variable : place.block->variables) {
      const bool parameter =
          variable.section == NameToken::VAR_INPUT || variable.section == NameToken::VAR_OUTPUT;
      const bool seen = context_.code.isInTest() && variable.section == NameToken::VAR;
      if (parameter || seen) all.push_back({variable.name, kNoSymbol, &variable});
    }
  }
  const auto addAll = [&](const auto& variables, bool instance) {
    for (const auto& variable : variables) {
      const bool parameter = variable->isParameter() && variable->role != Role::InOut;
      const bool seen = context_.code.isInTest() && variable->role == Role::Local;
      if (variable->declared == nullptr || (instance && !parameter && !seen)) continue;
      all.push_back({variable->name(), view_.symbols().of(variable.get()), nullptr});
    }
  };
  if (const auto* const structure = dynamic_cast<const StructType*>(place.type)) {
    addAll(structure->members(), false);
  } else if (const auto* const instance = dynamic_cast<const InstanceType*>(place.type)) {
    addAll(instance->unit->variables(), true);
  }
  return all;
}

}  // namespace refhost
