#include "refhost/editor/semantic_tokens.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "hostkit/folding.h"
#include "refhost/editor/source_tokens.h"

namespace refhost {

namespace {

using SemanticKind = SemanticToken::Kind;

// Words that are keywords in their context and names elsewhere.
constexpr std::string_view kContextual[] = {"TEST",     "END_TEST",     "SETUP",    "END_SETUP",
                                            "TEARDOWN", "END_TEARDOWN", "RESOURCE", "ON",
                                            "TASK",     "END_RESOURCE", "WITH",     "PERSISTENT",
                                            "R_EDGE",   "F_EDGE",       "REF",      "REFERENCE"};

constexpr std::string_view kWordOperators[] = {"NOT",     "AND", "AND_THEN", "OR",
                                               "OR_ELSE", "XOR", "MOD"};
constexpr std::string_view kTypeWords[] = {"STRING", "WSTRING"};

template <std::size_t N>
bool isAmong(std::string_view word, const std::string_view (&words)[N]) {
  return std::any_of(std::begin(words), std::end(words), [word](std::string_view other) {
    return vel::equalIgnoringCase(word, other);
  });
}

SemanticKind semanticKindOf(SymbolKind kind) {
  switch (kind) {
    case SymbolKind::Function:
    case SymbolKind::Operator:
    case SymbolKind::StandardFunction:
      return SemanticKind::Function;
    case SymbolKind::Structure:
    case SymbolKind::Enumeration:
    case SymbolKind::Type:
    case SymbolKind::ElementaryType:
      return SemanticKind::Type;
    case SymbolKind::Member:
      return SemanticKind::Member;
    case SymbolKind::Value:
      return SemanticKind::Value;
    case SymbolKind::Variable:
    case SymbolKind::Temporary:
    case SymbolKind::Global:
    case SymbolKind::Task:
    case SymbolKind::Instance:
      return SemanticKind::Variable;
    case SymbolKind::Input:
    case SymbolKind::Output:
    case SymbolKind::InOut:
      return SemanticKind::Parameter;
    case SymbolKind::Program:
    case SymbolKind::FunctionBlock:
    case SymbolKind::Setup:
    case SymbolKind::Test:
    case SymbolKind::Teardown:
    case SymbolKind::Configuration:
    case SymbolKind::Resource:
      break;
  }
  return SemanticKind::Block;
}

// Of a token that is no name of a symbol.
std::optional<SemanticKind> semanticKindOf(const SourceToken& token, std::string_view text) {
  switch (token.kind) {
    case SourceToken::Kind::Keyword:
      return isAmong(text, kWordOperators) ? SemanticKind::Operator
             : isAmong(text, kTypeWords)   ? SemanticKind::Type
                                           : SemanticKind::Keyword;
    case SourceToken::Kind::Name:
      return isAmong(text, kContextual) ? std::optional(SemanticKind::Keyword) : std::nullopt;
    case SourceToken::Kind::Number:
      return SemanticKind::Number;
    case SourceToken::Kind::String:
      return SemanticKind::String;
    case SourceToken::Kind::Truth:
      return SemanticKind::Constant;
    case SourceToken::Kind::Address:
      return SemanticKind::Variable;
    case SourceToken::Kind::Mark:
      return std::string_view(":=>+-*/<&^").find(text[0]) != std::string_view::npos && text != ":"
                 ? std::optional(SemanticKind::Operator)
                 : std::nullopt;
    case SourceToken::Kind::Comment:
    case SourceToken::Kind::Pragma:
      return SemanticKind::Comment;
    case SourceToken::Kind::TypedName:
    case SourceToken::Kind::Error:
      break;
  }
  return {};
}

// A named argument that no declaration of the program knows: of an operator or a task.
bool isFormal(std::string_view text, const std::vector<SourceToken>& tokens, std::size_t i) {
  if (tokens[i].kind != SourceToken::Kind::Name || i == 0 || i + 1 == tokens.size()) return false;
  const char before = text[tokens[i - 1].span.begin];
  const std::string_view next = text.substr(tokens[i + 1].span.begin, 2);
  return (before == '(' || before == ',') && tokens[i - 1].kind == SourceToken::Kind::Mark &&
         (next == ":=" || next == "=>");
}

}  // namespace

std::vector<SemanticToken> semanticTokensOf(const ProgramView& view, std::uint32_t file) {
  std::vector<SemanticToken> tokens;
  const std::string_view text = view.program().sources.text(file);
  const std::vector<Occurrence>& occurrences = view.occurrences().all();
  auto next = std::find_if(occurrences.begin(), occurrences.end(),
                           [file](const Occurrence& at) { return at.range.begin.file() == file; });
  const auto stands = [&](std::uint32_t before) {
    return next != occurrences.end() && next->range.begin.file() == file &&
           next->range.begin.offset() < before;
  };
  const auto add = [&](std::uint32_t begin, std::uint32_t end, SemanticKind kind,
                       unsigned modifiers) {
    tokens.push_back({{vel::TextLocation(file, begin), end - begin}, kind, modifiers});
  };
  const std::vector<SourceToken> words = sourceTokens(text);
  for (std::size_t i = 0; i < words.size(); ++i) {
    const SourceToken& token = words[i];
    bool named = false;
    for (; stands(token.span.end); ++next) {
      const std::uint32_t begin = next->range.begin.offset();
      if (begin < token.span.begin || begin + next->range.length > token.span.end) continue;
      const SymbolInfo& symbol = view.symbols()[next->symbol];
      unsigned modifiers = next->declares ? SemanticToken::kDeclaration : 0U;
      if (symbol.constant) modifiers |= SemanticToken::kReadonly;
      if (symbol.standard) modifiers |= SemanticToken::kDefaultLibrary;
      add(begin, begin + next->range.length, semanticKindOf(symbol.kind), modifiers);
      named = true;
    }
    const std::string_view word = text.substr(token.span.begin, token.span.end - token.span.begin);
    auto kind = semanticKindOf(token, word);
    if (!named && isFormal(text, words, i)) kind = SemanticKind::Parameter;
    if (named || !kind) continue;
    const bool library = *kind == SemanticKind::Type || *kind == SemanticKind::Parameter;
    const unsigned modifiers = library                           ? SemanticToken::kDefaultLibrary
                               : *kind == SemanticKind::Constant ? SemanticToken::kReadonly
                                                                 : 0U;
    for (std::size_t at = 0; at < word.size();) {
      const std::size_t end = std::min(word.find_first_of("\r\n", at), word.size());
      if (end > at) {
        add(token.span.begin + static_cast<std::uint32_t>(at),
            token.span.begin + static_cast<std::uint32_t>(end), *kind, modifiers);
      }
      at = end + 1;
    }
  }
  return tokens;
}

}  // namespace refhost
