#include "refhost/editor/proposals.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "hostkit/folding.h"
#include "refhost/editor/outline.h"
#include "refhost/services/derived_types.h"

namespace refhost {

namespace {

// What stands between the keywords of a block.
struct BlockBody {
  std::string_view opener;
  std::string_view text;
};
constexpr BlockBody kBodies[] = {
    {"IF", " ${1:condition} THEN\n\t$0\n"},
    {"CASE", " ${1:selector} OF\n\t${2:value}: $0\n"},
    {"FOR", " ${1:i} := ${2:1} TO ${3:n} DO\n\t$0\n"},
    {"WHILE", " ${1:condition} DO\n\t$0\n"},
    {"REPEAT", "\n\t$0\nUNTIL ${1:condition}\n"},
    {"PROGRAM", " ${1:Name}\n\t$0\n"},
    {"FUNCTION", " ${1:Name} : ${2:INT}\n\t$0\n"},
    {"FUNCTION_BLOCK", " ${1:Name}\n\t$0\n"},
    {"TYPE", "\n\t${1:Name} : $0;\n"},
    {"CONFIGURATION", " ${1:Name}\n\t$0\n"},
    {"RESOURCE", " ${1:Name} ON ${2:Processor}\n\t$0\n"},
    {"TEST", " '${1:name}'\n\t$0\n"},
};
// More of them nobody reads; further letters bring those that are left out.
constexpr std::size_t kMost = 1000;

constexpr std::string_view kPlainBody = "\n\t$0\n";

std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '$' || c == '}' || c == '\\') result += '\\';
    result += c;
  }
  return result;
}

std::string hole(std::size_t number, std::string_view name) {
  return "${" + std::to_string(number) + ":" + escaped(name) + "}";
}

// The arguments that a call needs: named ones of an instance, else by their places. What has no
// result is called for its outputs.
std::string argumentsOf(const CalleeAt& callee) {
  std::string text;
  std::size_t number = 0;
  const bool named = callee.kind == CalleeAt::Kind::Instance || callee.kind == CalleeAt::Kind::Task;
  for (const CalleeParameter& parameter : callee.parameters) {
    const bool output = parameter.passing == CalleeParameter::Passing::Out;
    if (output && (named || !callee.result.empty())) continue;
    const bool note = callee.kind == CalleeAt::Kind::Assertion && parameter.name == "text";
    if (note) continue;
    if (!text.empty()) text += ", ";
    if (named) text += escaped(parameter.name) + " := ";
    text += hole(++number, parameter.name);
  }
  return text;
}

}  // namespace

Proposal::Kind proposalKind(const SymbolInfo& symbol) {
  switch (symbol.kind) {
    case SymbolKind::Program:
      return Proposal::Kind::Program;
    case SymbolKind::FunctionBlock:
      return Proposal::Kind::Block;
    case SymbolKind::Function:
    case SymbolKind::StandardFunction:
      return Proposal::Kind::Function;
    case SymbolKind::Operator:
      return Proposal::Kind::Operator;
    case SymbolKind::Structure:
      return Proposal::Kind::Structure;
    case SymbolKind::Enumeration:
      return Proposal::Kind::Enumeration;
    case SymbolKind::Type:
    case SymbolKind::ElementaryType:
      return Proposal::Kind::Type;
    case SymbolKind::Member:
      return Proposal::Kind::Member;
    case SymbolKind::Value:
      return Proposal::Kind::Value;
    case SymbolKind::Task:
      return Proposal::Kind::Task;
    case SymbolKind::Instance:
    case SymbolKind::Resource:
    case SymbolKind::Configuration:
      return Proposal::Kind::Instance;
    default:
      return symbol.constant ? Proposal::Kind::Constant : Proposal::Kind::Variable;
  }
}

bool Proposals::suits(std::string_view name) const {
  const std::string_view prefix = names_.context().prefix;
  std::size_t matched = 0;
  for (const char c : name) {
    if (matched < prefix.size() && toLower(c) == toLower(prefix[matched])) ++matched;
  }
  return matched == prefix.size();
}

Proposal& Proposals::add(Proposal proposal, Rank rank, Fit fit) {
  constexpr int kStep = 10;
  constexpr int kInner = 4 * kStep;
  const bool choice = expected_.type.type != nullptr && rank != Rank::First;
  const std::string_view prefix = names_.context().prefix;
  const bool begins =
      equalIgnoringCase(std::string_view(proposal.label).substr(0, prefix.size()), prefix);
  const bool written = begins && !prefix.empty() && proposal.label.size() == prefix.size();
  proposal.rank = written ? 0
                          : static_cast<int>(rank) + (choice ? kStep * static_cast<int>(fit) : 0) +
                                (begins ? 0 : kInner);
  return proposals_.emplace_back(std::move(proposal));
}

void Proposals::addWord(std::string_view word, Rank rank, Fit fit) {
  if (!suits(word)) return;
  Proposal proposal;
  proposal.label = std::string(word);
  const bool end = word.substr(0, 4) == "END_";
  proposal.topic = std::string(end ? word.substr(4) : word);
  const Construct* const closed = end ? constructNamed(word.substr(4)) : nullptr;
  const bool block = closed != nullptr && closed->kind == Construct::Kind::Statement;
  const bool statement = block || (beginsStatement(word) && constructNamed(word) == nullptr);
  if (statement && !names_.context().isBefore(";")) proposal.text = proposal.label + ';';
  add(std::move(proposal), rank, fit);
}

void Proposals::addBlock(const Construct& construct) {
  const std::string name(construct.openerName());
  addWord(name);
  if (!snippets_ || !suits(name)) return;
  const auto* const found =
      std::find_if(std::begin(kBodies), std::end(kBodies),
                   [&name](const BlockBody& row) { return row.opener == name; });
  Proposal proposal;
  proposal.kind = Proposal::Kind::Snippet;
  proposal.label = name + " ... " + std::string(construct.closerName);
  proposal.text = name;
  proposal.text += found != std::end(kBodies) ? found->text : kPlainBody;
  proposal.text += construct.closerName;
  if (construct.kind == Construct::Kind::Statement) proposal.text += ';';
  proposal.snippet = true;
  proposal.topic = name;
  add(std::move(proposal), Rank::Word);
}

void Proposals::addSymbol(SymbolId id, Rank rank, std::string_view label) {
  const SymbolInfo& symbol = names_.symbols()[id];
  if (label.empty()) label = symbol.name;
  if (label.empty() || !suits(label)) return;
  Proposal proposal;
  proposal.kind = proposalKind(symbol);
  proposal.label = std::string(label);
  proposal.id = id;
  const bool language = !symbol.isDeclared() || (symbol.standard && isUnit(symbol.kind));
  if (language) proposal.topic = symbol.name;
  const vel::SymbolDataType* const type =
      symbol.isDeclared() && !isUnit(symbol.kind) ? names_.symbols().dataType(id) : nullptr;
  if (symbol.isDeclared()) {
    proposal.detail = symbol.kind == SymbolKind::Value && type != nullptr && !isAnonymous(*type)
                          ? displayName(type)
                          : typeText(symbol);
  }
  add(std::move(proposal), rank, fits({type, {}}, expected_.type));
}

void Proposals::addVariable(const NamedPart& part, Rank rank, bool member) {
  if (!suits(part.name)) return;
  Proposal proposal;
  proposal.label = std::string(part.name);
  proposal.kind = Proposal::Kind::Variable;
  if (part.id != kNoSymbol) {
    const SymbolInfo& symbol = names_.symbols()[part.id];
    proposal.id = part.id;
    proposal.detail = typeText(symbol);
    // The result of a function is a variable in it.
    if (symbol.kind != SymbolKind::Function) proposal.kind = proposalKind(symbol);
  } else if (part.lexical != nullptr) {
    proposal.detail = inOneLine(part.lexical->type);
    if (part.lexical->constant) proposal.kind = Proposal::Kind::Constant;
  }
  if (member) proposal.kind = Proposal::Kind::Member;
  const bool choice = expected_.type.type != nullptr;
  add(std::move(proposal), rank,
      choice ? fits(names_.typeOf(part), expected_.type) : Fit::Possible);
}

void Proposals::addCall(const CalleeAt& callee, Proposal proposal, Rank rank, Fit fit,
                        bool statement) {
  const std::string arguments = argumentsOf(callee);
  const bool followed = names_.context().isBefore("(");
  if (snippets_ && !followed) {
    const bool ends = statement && !names_.context().isBefore(";");
    proposal.text = escaped(proposal.text) + '(' + arguments + ')' + (ends ? ";" : "") + "$0";
    proposal.snippet = true;
  }
  add(std::move(proposal), rank, fit);
}

Completion Proposals::take(std::uint32_t file) {
  Completion completion;
  const Span word = names_.context().word;
  completion.replaced = {vel::TextLocation(file, word.begin), word.end - word.begin};
  completion.incomplete = incomplete;
  completion.positional = positional;
  completion.parameters = parameters;
  std::stable_sort(proposals_.begin(), proposals_.end(),
                   [](const Proposal& a, const Proposal& b) { return a.rank < b.rank; });
  std::set<std::pair<std::string, std::string>> known;
  for (Proposal& proposal : proposals_) {
    if (completion.proposals.size() == kMost) {
      completion.incomplete = true;
      break;
    }
    if (!known.emplace(proposal.label, proposal.text).second) continue;
    completion.proposals.push_back(std::move(proposal));
  }
  return completion;
}

}  // namespace refhost
