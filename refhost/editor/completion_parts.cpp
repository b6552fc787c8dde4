#include "refhost/editor/completion_parts.h"

#include <algorithm>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "hostkit/operator_traits.h"
#include "refhost/editor/outline.h"
#include "refhost/prelude/prelude.h"
#include "refhost/services/derived_types.h"
#include "refhost/services/standard_functions.h"
#include "refhost/services/test_functions.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

using PartToken = grammar::Parser::token;

// The letters of a conversion that must be there before it is proposed.
constexpr std::size_t kFewLetters = 2;

bool startsWith(std::string_view name, std::string_view prefix) {
  return equalIgnoringCase(name.substr(0, prefix.size()), prefix);
}

}  // namespace

Rank CompletionParts::rankOf(const NamedPart& part) const {
  if (part.id == kNoSymbol) return Rank::Local;
  return names_.symbols()[part.id].kind == SymbolKind::Global ? Rank::Global : Rank::Local;
}

void CompletionParts::addVariables(bool targets) const {
  for (const NamedPart& part : names_.variables()) {
    const bool constant = part.id != kNoSymbol ? names_.symbols()[part.id].constant
                                               : part.lexical != nullptr && part.lexical->constant;
    if (targets ? constant : context_.constant && !constant) continue;
    proposals_.addVariable(part, rankOf(part));
    if (targets) addInstanceCall(part);
  }
}

void CompletionParts::addInstanceCall(const NamedPart& part) const {
  if (!proposals_.withSnippets() || !proposals_.suits(part.name) || context_.isBefore("(")) return;
  const auto callee = calleeOfType(names_, names_.typeOf(part));
  if (!callee) return;
  Proposal proposal;
  proposal.kind = Proposal::Kind::Instance;
  proposal.label = std::string(part.name) + "(...)";
  proposal.text = std::string(part.name);
  proposal.id = part.id;
  proposal.detail = callee->name;
  proposals_.addCall(*callee, std::move(proposal), rankOf(part), Fit::Possible, true);
}

void CompletionParts::addCallable(std::string_view name, Rank rank, bool statement) const {
  if (!proposals_.suits(name)) return;
  const auto callee = calleeNamed(names_, name);
  if (!callee) return;
  // A result of the language's functions is not thrown away.
  if (statement && rank == Rank::Standard && !callee->result.empty()) return;
  Proposal proposal;
  proposal.kind = callee->kind == CalleeAt::Kind::Operator ? Proposal::Kind::Operator
                                                           : Proposal::Kind::Function;
  proposal.label = proposal.text = std::string(name);
  proposal.id = callee->id;
  proposal.detail = signatureText(*callee, false);
  const bool own = callee->id != kNoSymbol && !names_.symbols()[callee->id].standard;
  if (!own) proposal.topic = proposal.label;
  const PlaceType result = callee->result.empty() ? PlaceType{} : names_.typeNamed(callee->result);
  proposals_.addCall(*callee, std::move(proposal), rank, fits(result, proposals_.expected().type),
                     statement);
}

void CompletionParts::addCallables(bool statement) const {
  const Symbols& symbols = names_.symbols();
  for (const SymbolId id : symbols.partsOf(kNoSymbol)) {
    const SymbolInfo& symbol = symbols[id];
    if (symbol.kind != SymbolKind::Function || symbol.standard || symbol.name.empty()) continue;
    addCallable(symbol.name, Rank::Unit, statement);
  }
  for (const PreludeUnit& unit : preludeUnits()) {
    if (!unit.isBlock) addCallable(unit.name, Rank::Standard, statement);
  }
  if (context_.code.isInTest() && statement) {
    forEachTestFunction(
        [&](const TestFunction& function) { addCallable(function.name, Rank::Unit, true); });
  }
  if (!statement) {
    forEachStandardFunction([&](const StandardFunction& function) {
      // AND and the like are words, too.
      addCallable(function.name, Rank::Standard, false);
    });
  }
  const SymbolId reference = symbols.standard("REF");
  if (!statement && reference != kNoSymbol) proposals_.addSymbol(reference, Rank::Standard);
  addOperators(statement);
}

void CompletionParts::addOperators(bool statement) const {
  const Services& services = names_.view().program().services;
  if (services.operators == nullptr) return;
  std::vector<std::string> all;
  services.operators->operatorNames(all);
  const std::string_view prefix = context_.prefix;
  for (const std::string& folded : all) {
    const std::string& name = services.operators->findOperator(folded)->name;
    if (hostkit::operatorTraits(name).givesValue() == statement) continue;
    // They would hide everything else.
    if (isConversion(name)) {
      const bool few = prefix.size() < kFewLetters;
      if (few && startsWith(name, prefix)) proposals_.incomplete = true;
      if (few || !startsWith(name, prefix)) continue;
    }
    addCallable(name, Rank::Standard, statement);
  }
}

void CompletionParts::addOperands() const {
  addPathParts();
  if (addArguments()) return;
  const bool field = !names_.membersOf(proposals_.expected().fieldsOf).empty();
  if (field || context_.section() == PartToken::VAR_CONFIG) return;
  const bool output = context_.code.kindBefore() == PartToken::ARROW;
  addVariables(output);
  if (output) return others_.addTargets();
  others_.addOperands();
  addWantedValues();
  // Labels are values of the selector's own enumeration.
  const bool own = context_.place == CursorContext::Place::OwnLabel &&
                   names_.enumerationOf(proposals_.expected().type) != kNoSymbol;
  for (const SymbolId value : names_.values()) {
    if (own || isUsedLabel(names_.symbols()[value].name)) continue;
    proposals_.addSymbol(value, Rank::Value);
  }
  const PlaceType truth = names_.typeNamed("BOOL");
  for (const char* const word : {"TRUE", "FALSE"}) {
    proposals_.addWord(word, Rank::Word, fits(truth, proposals_.expected().type));
  }
  proposals_.addWord("NOT");
  for (const SymbolId id : names_.symbols().partsOf(kNoSymbol)) {
    if (names_.symbols()[id].kind == SymbolKind::Enumeration) {
      proposals_.addSymbol(id, Rank::Type);
    }
  }
  if (context_.constant) return;
  proposals_.addWord("NULL");
  addCallables(false);
}

// Those of the expected enumeration, with its name where a variable hides them.
void CompletionParts::addWantedValues() const {
  const SymbolId wanted = names_.enumerationOf(proposals_.expected().type);
  if (wanted == kNoSymbol) return;
  const SymbolInfo& type = names_.symbols()[wanted];
  for (const SymbolId id : names_.symbols().partsOf(wanted)) {
    const SymbolInfo& value = names_.symbols()[id];
    if (value.kind != SymbolKind::Value || isUsedLabel(value.name)) continue;
    const bool hidden = isType(type.kind) && names_.variable(value.name) != nullptr;
    proposals_.addSymbol(id, Rank::First, hidden ? type.name + '#' + value.name : value.name);
  }
}

void CompletionParts::addStatements() const {
  addVariables(true);
  addCallables(true);
  others_.addTargets();
  others_.addCalls();
}

void CompletionParts::addLabels() const {
  const PlaceType selector = proposals_.expected().type;
  const SymbolId type = names_.enumerationOf(selector);
  if (type == kNoSymbol) return;
  for (const SymbolId value : names_.symbols().partsOf(type)) {
    if (!isUsedLabel(names_.symbols()[value].name)) proposals_.addSymbol(value, Rank::First);
  }
  if (isType(names_.symbols()[type].kind)) proposals_.addSymbol(type, Rank::Type);
}

bool CompletionParts::isUsedLabel(std::string_view value) const {
  using Place = CursorContext::Place;
  if (context_.place != Place::Label && context_.place != Place::OwnLabel) return false;
  const std::vector<std::string_view>& used = context_.labels;
  return std::any_of(used.begin(), used.end(), [value](std::string_view label) {
    const std::size_t mark = label.find('#');
    if (mark != std::string_view::npos) label.remove_prefix(mark + 1);
    return equalIgnoringCase(label, value);
  });
}

void CompletionParts::addMembers() const {
  const OpenCode& code = context_.code;
  if (code.tokens.size() < 2) return;
  if (context_.section() == PartToken::VAR_CONFIG) addPathParts();
  const std::size_t last = code.tokens.size() - 2;
  const std::size_t first = context_.accessBegin(last);
  if (first > last) return;
  const bool plain = first == last;
  for (const NamedPart& part : names_.membersOf(names_.typeOfAccess(first, last))) {
    proposals_.addVariable(part, Rank::First, true);
  }
  if (plain && names_.variable(code.textOf(first)) == nullptr) addValuesOf(code.textOf(first));
}

void CompletionParts::addValuesOf(std::string_view type) const {
  const SymbolId id = names_.symbols().ofType(type);
  if (id != kNoSymbol) {
    for (const SymbolId value : names_.symbols().partsOf(id)) {
      if (names_.symbols()[value].kind == SymbolKind::Value) {
        proposals_.addSymbol(value, Rank::First);
      }
    }
  } else {
    others_.addValuesOf(type);
  }
  if (equalIgnoringCase(type, "BOOL")) {
    for (const char* const word : {"TRUE", "FALSE"}) proposals_.addWord(word);
  }
}

void CompletionParts::addTypes() const {
  const Symbols& symbols = names_.symbols();
  const bool result = context_.code.inUnitHeader;
  for (const SymbolId id : symbols.partsOf(kNoSymbol)) {
    const SymbolInfo& symbol = symbols[id];
    // No function block contains itself.
    const bool block = symbol.kind == SymbolKind::FunctionBlock && !result && id != names_.unit();
    const bool program = symbol.kind == SymbolKind::Program && context_.code.isInTest();
    if (block || program) proposals_.addSymbol(id, Rank::Unit);
    if (isType(symbol.kind)) proposals_.addSymbol(id, Rank::Type);
  }
  for (SymbolId id = 0; id < symbols.count(); ++id) {
    const bool elementary = symbols[id].kind == SymbolKind::ElementaryType;
    if (elementary) proposals_.addSymbol(id, Rank::Standard);
  }
  for (const PreludeUnit& unit : preludeUnits()) {
    const bool known = symbols.ofType(unit.name) != kNoSymbol;
    if (!unit.isBlock || known || result || !proposals_.suits(unit.name)) continue;
    Proposal proposal;
    proposal.kind = Proposal::Kind::Block;
    proposal.label = proposal.topic = std::string(unit.name);
    proposals_.add(std::move(proposal), Rank::Standard);
  }
  proposals_.addWords(words::kBracketTypes);
  for (const char* const word : {"POINTER", "REF_TO", "REFERENCE"}) proposals_.addWord(word);
  if (!result) proposals_.addWord("STRUCT");
  others_.addTypes();
}

// Each with its type, as a declaration.
void CompletionParts::addGlobals() const {
  for (const SymbolId id : names_.symbols().partsOf(kNoSymbol)) {
    const SymbolInfo& symbol = names_.symbols()[id];
    if (symbol.kind != SymbolKind::Global || !proposals_.suits(symbol.name)) continue;
    Proposal proposal;
    proposal.kind = proposalKind(symbol);
    proposal.label = symbol.name;
    proposal.detail = typeText(symbol);
    proposal.id = id;
    const bool alone = !context_.isBefore(":") && !context_.isBefore(",");
    if (alone && !proposal.detail.empty()) {
      proposal.text = proposal.label + " : " + proposal.detail + ';';
    }
    proposals_.add(std::move(proposal), Rank::First);
  }
  others_.addGlobals();
}

void CompletionParts::addPrograms() const {
  addOfKind(SymbolKind::Program);
  others_.addPrograms();
}

void CompletionParts::addOfKind(SymbolKind kind) const {
  for (SymbolId id = 0; id < names_.symbols().count(); ++id) {
    if (names_.symbols()[id].kind == kind) proposals_.addSymbol(id, Rank::First);
  }
}

void CompletionParts::addConfigured() const {
  for (const SymbolKind kind :
       {SymbolKind::Resource, SymbolKind::Instance, SymbolKind::Global, SymbolKind::Program}) {
    addOfKind(kind);
  }
}

// What follows in `Resource.instance.variable`, of which the analysis of expressions knows nothing.
void CompletionParts::addPathParts() const {
  const OpenCode& code = context_.code;
  if (context_.section() != PartToken::VAR_CONFIG || code.kindBefore() != '.') return;
  const Symbols& symbols = names_.symbols();
  const auto named = [&](SymbolId container, std::string_view name) {
    for (SymbolId id = 0; id < symbols.count(); ++id) {
      const SymbolInfo& symbol = symbols[id];
      const bool root = symbol.kind == SymbolKind::Resource ||
                        symbol.kind == SymbolKind::Instance || symbol.kind == SymbolKind::Program ||
                        symbol.kind == SymbolKind::Global;
      const bool here = container == kNoSymbol ? root : symbol.container == container;
      if (here && symbol.isDeclared() && equalIgnoringCase(symbol.name, name)) return id;
    }
    return kNoSymbol;
  };
  SymbolId owner = kNoSymbol;
  int depth = 0;
  for (std::size_t i = code.statement; i + 1 < code.tokens.size(); ++i) {
    if (code.tokens[i].token == '[') ++depth;
    if (code.tokens[i].token == ']') --depth;
    if (code.tokens[i].token != PartToken::IDENTIFIER || depth > 0) continue;
    const SymbolId at = named(owner, code.textOf(i));
    if (at == kNoSymbol) return;
    owner = at;
    const vel::SymbolDataType* type = symbols.dataType(at);
    while (const auto* const array = dynamic_cast<const ArrayType*>(type)) type = array->element;
    if (symbols[at].kind == SymbolKind::Instance) {
      owner = symbols.ofType(vel::TreeBuilder::source(*symbols[at].node->leaf(1)->leaf(0)));
    } else if (const auto* const block = dynamic_cast<const InstanceType*>(type)) {
      owner = symbols.ofUnit(*block->unit->node);
    } else if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
      owner = symbols.ofType(structure->name());
    }
  }
  if (owner == kNoSymbol) return;
  for (const SymbolId part : symbols.partsOf(owner)) {
    const SymbolKind kind = symbols[part].kind;
    const bool place = kind == SymbolKind::Instance || kind == SymbolKind::Member;
    if (place || isVariable(kind)) proposals_.addSymbol(part, Rank::First);
  }
}

}  // namespace refhost
