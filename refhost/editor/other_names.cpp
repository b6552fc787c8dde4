#include "refhost/editor/other_names.h"

#include "hostkit/folding.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

CalleeAt calleeOf(const FileDeclaration& function) {
  CalleeAt callee;
  callee.name = function.name;
  callee.result = function.type;
  for (const FileDeclaration::Parameter& parameter : function.parameters) {
    CalleeParameter& added = callee.parameters.emplace_back();
    added.name = parameter.name;
    using Passing = CalleeParameter::Passing;
    added.passing = parameter.kind == SymbolKind::Input    ? Passing::In
                    : parameter.kind == SymbolKind::Output ? Passing::Out
                                                           : Passing::InOut;
  }
  return callee;
}

}  // namespace

bool OtherNames::isKnown(std::string_view name) const {
  const Symbols& symbols = names_.symbols();
  const LexicalUnit* const unit = names_.lexicalUnit(name);
  // By the tokens alone an instance in a configuration looks like a PROGRAM.
  const bool instance = unit != nullptr && unit->opener == grammar::Parser::token::PROGRAM;
  return names_.variable(name) != nullptr || symbols.ofType(name) != kNoSymbol ||
         symbols.standard(name) != kNoSymbol || (unit != nullptr && !instance);
}

template <typename Use>
void OtherNames::forEach(Use use) const {
  FoldedMap<bool> seen;
  for (const FileDeclaration* const declaration : declarations_) {
    const std::string_view name = declaration->name;
    if (!proposals_.suits(name) || !seen.emplace(name, true).second || isKnown(name)) continue;
    use(*declaration);
  }
}

Proposal OtherNames::proposalOf(const FileDeclaration& declaration) {
  SymbolInfo symbol;
  symbol.kind = declaration.kind;
  symbol.constant = declaration.constant;
  Proposal proposal;
  proposal.kind = proposalKind(symbol);
  proposal.label = declaration.name;
  proposal.detail = declaration.file.substr(declaration.file.rfind('/') + 1);
  proposal.other = &declaration;
  return proposal;
}

void OtherNames::add(const FileDeclaration& declaration, Fit fit) const {
  // Values are many, and the program has no variable of their type.
  const Rank rank = declaration.kind == SymbolKind::Value ? Rank::Word : Rank::Other;
  proposals_.add(proposalOf(declaration), rank, fit);
}

Fit OtherNames::fitOf(const FileDeclaration& declaration) const {
  return fits(names_.typeNamed(declaration.type), proposals_.expected().type);
}

void OtherNames::addCall(const FileDeclaration& declaration, bool statement) const {
  Proposal proposal = proposalOf(declaration);
  proposal.text = proposal.label;
  proposals_.addCall(calleeOf(declaration), std::move(proposal), Rank::Other, fitOf(declaration),
                     statement);
}

void OtherNames::addTypes() const {
  const bool result = names_.context().code.inUnitHeader;
  const bool test = names_.context().code.isInTest();
  forEach([&](const FileDeclaration& other) {
    const bool block = other.kind == SymbolKind::FunctionBlock && !result;
    const bool program = other.kind == SymbolKind::Program && test;
    if (block || program || isType(other.kind)) add(other);
  });
}

void OtherNames::addOperands() const {
  const bool constant = names_.context().constant;
  forEach([&](const FileDeclaration& other) {
    if (other.kind == SymbolKind::Global) {
      if (!constant || other.constant) add(other, fitOf(other));
    } else if (other.kind == SymbolKind::Function) {
      if (!constant) addCall(other, false);
    } else if (other.kind == SymbolKind::Value || other.kind == SymbolKind::Enumeration) {
      add(other);
    }
  });
}

void OtherNames::addTargets() const {
  forEach([&](const FileDeclaration& other) {
    if (other.kind == SymbolKind::Global && !other.constant) add(other, fitOf(other));
  });
}

void OtherNames::addCalls() const {
  forEach([&](const FileDeclaration& other) {
    if (other.kind == SymbolKind::Function) addCall(other, true);
  });
}

void OtherNames::addValuesOf(std::string_view type) const {
  const FileDeclaration* enumeration = nullptr;
  for (const FileDeclaration* const other : declarations_) {
    if (enumeration == nullptr) {
      if (isType(other->kind) && equalIgnoringCase(other->name, type)) enumeration = other;
    } else if (other->file == enumeration->file && proposals_.suits(other->name) &&
               equalIgnoringCase(other->container, type)) {
      proposals_.add(proposalOf(*other), Rank::First);
    }
  }
}

void OtherNames::addGlobals() const {
  const CursorContext& context = names_.context();
  const bool alone = !context.isBefore(":") && !context.isBefore(",");
  forEach([&](const FileDeclaration& other) {
    if (other.kind != SymbolKind::Global) return;
    Proposal proposal = proposalOf(other);
    if (alone && !other.type.empty()) proposal.text = other.name + " : " + other.type + ';';
    proposals_.add(std::move(proposal), Rank::Other);
  });
}

void OtherNames::addPrograms() const {
  forEach([&](const FileDeclaration& other) {
    if (other.kind == SymbolKind::Program) add(other);
  });
}

}  // namespace refhost
