#include "refhost/editor/hover.h"

#include <algorithm>

#include "refhost/diagnostics.h"
#include "refhost/editor/constant_text.h"
#include "refhost/editor/source_tokens.h"
#include "refhost/services/layout.h"
#include "refhost/syntax/constructs.h"

namespace refhost {

using vel::TreeBuilder;

namespace {

std::string_view sectionOf(VarSection section) {
  switch (section) {
    case VarSection::Var:
      return "VAR";
    case VarSection::Input:
      return "VAR_INPUT";
    case VarSection::Output:
      return "VAR_OUTPUT";
    case VarSection::InOut:
      return "VAR_IN_OUT";
    case VarSection::Temp:
      return "VAR_TEMP";
    case VarSection::Global:
      return "VAR_GLOBAL";
    case VarSection::External:
      break;
  }
  return "VAR_EXTERNAL";
}

std::string inCapitals(std::string_view word) {
  std::string capitals(word);
  std::transform(capitals.begin(), capitals.end(), capitals.begin(), toUpper);
  return capitals;
}

// `name : INT := 5;` of a declaration that may have several names.
std::string variableText(const SymbolInfo& symbol) {
  const ASTNode& declaration = *symbol.node;
  std::string text = symbol.name;
  const ASTNode* const address = declaration.leaf(VarDecl::kAddress);
  const bool named = address != nullptr && TreeBuilder::source(*address) != symbol.name;
  if (named) text.append(" AT ").append(TreeBuilder::source(*address));
  const ASTNode* const spec = declaration.leaf(VarDecl::kType);
  if (spec == nullptr) return text + ';';
  const std::uint32_t from = spec->pos().offset() - declaration.pos().offset();
  return text.append(" : ").append(TreeBuilder::source(declaration).substr(from)) + ';';
}

// The name, the result type and the parameters.
std::string unitText(const Unit& unit) {
  const std::string_view source = TreeBuilder::source(unit);
  const ASTNode* last = unit.leaf(Unit::kReturnType);
  if (last == nullptr) last = unit.leaf(Unit::kName);
  const std::uint32_t end = last->pos().offset() - unit.pos().offset() +
                            static_cast<std::uint32_t>(TreeBuilder::source(*last).size());
  std::string text(source.substr(0, end));
  const ASTNode* const blocks = unit.leaf(Unit::kVarBlocks);
  for (int i = 0; blocks != nullptr && i < blocks->leavesCount(); ++i) {
    const auto& block = static_cast<const VarBlock&>(*blocks->leaf(i));
    const bool shown = block.section == VarSection::Input || block.section == VarSection::Output ||
                       block.section == VarSection::InOut;
    if (!shown) continue;
    const std::string_view body = TreeBuilder::source(block);
    const char* const gap =
        body.empty() || body[0] == ' ' || body[0] == '\n' || body[0] == '\r' ? "" : " ";
    text.append("\n").append(sectionOf(block.section)).append(gap).append(body);
  }
  return text;
}

const VarBlock* blockOf(const SymbolInfo& symbol) {
  const ASTNode* const parent = symbol.node->parent();
  const bool block = parent != nullptr && kindOf(*parent) == NodeKind::VarBlock;
  return block ? static_cast<const VarBlock*>(parent) : nullptr;
}

// Without the marks, and without blanks around the lines.
std::string plainComment(std::string_view comment) {
  const bool line = comment.substr(0, 2) == "//";
  comment.remove_prefix(2);
  const std::string_view end = comment.size() < 2 ? "" : comment.substr(comment.size() - 2);
  if (!line && (end == "*)" || end == "*/")) comment.remove_suffix(2);
  std::string text;
  while (!comment.empty()) {
    const std::size_t length = std::min(comment.find('\n'), comment.size());
    std::string_view part = comment.substr(0, length);
    comment.remove_prefix(std::min(length + 1, comment.size()));
    const std::size_t first = part.find_first_not_of(" \t*");
    if (first == std::string_view::npos) continue;
    part = part.substr(first, part.find_last_not_of(" \t\r*") + 1 - first);
    if (!text.empty()) text += '\n';
    text += part;
  }
  return text;
}

class Comments {
 public:
  Comments(const SourceManager& sources, std::uint32_t file)
      : sources_(sources), file_(file), text_(sources.text(file)), tokens_(sourceTokens(text_)) {}

  std::string of(const SourceRange& declaration) const {
    const std::uint32_t begin = declaration.begin.offset();
    const std::string beside = besides(begin + declaration.length);
    return joined(above(begin), beside);
  }
  static std::string joined(std::string first, const std::string& second) {
    if (!first.empty() && !second.empty()) first += '\n';
    return first += second;
  }
  // Behind the line in which a unit is named.
  std::string besides(std::uint32_t end) const {
    auto token = std::find_if(tokens_.begin(), tokens_.end(),
                              [end](const SourceToken& at) { return at.span.begin >= end; });
    const auto separates = [this](const SourceToken& at) {
      return at.kind == SourceToken::Kind::Mark &&
             (text_[at.span.begin] == ';' || text_[at.span.begin] == ',');
    };
    while (token != tokens_.end() && separates(*token)) ++token;
    const bool comment = token != tokens_.end() && token->kind == SourceToken::Kind::Comment;
    return comment && lineOf(token->span.begin) == lineOf(end) ? textOf(*token) : std::string();
  }
  // Comments in the lines directly above that stand there alone.
  std::string above(std::uint32_t begin) const {
    auto token = std::lower_bound(
        tokens_.begin(), tokens_.end(), begin,
        [](const SourceToken& at, std::uint32_t offset) { return at.span.begin < offset; });
    std::string text;
    std::uint32_t line = lineOf(begin);
    while (token != tokens_.begin()) {
      --token;
      if (token->kind == SourceToken::Kind::Pragma) continue;
      if (token->kind != SourceToken::Kind::Comment) break;
      const std::uint32_t last = lineOf(token->span.end - 1);
      if (last + 1 < line) break;
      const bool alone = token == tokens_.begin() ||
                         lineOf((token - 1)->span.end - 1) != lineOf(token->span.begin);
      if (!alone) break;
      text.insert(0, textOf(*token) + (text.empty() ? "" : "\n"));
      line = lineOf(token->span.begin);
    }
    return text;
  }

 private:
  std::uint32_t lineOf(std::uint32_t offset) const {
    return sources_.lineNumber(vel::TextLocation(file_, offset));
  }
  std::string textOf(const SourceToken& token) const {
    return plainComment(text_.substr(token.span.begin, token.span.end - token.span.begin));
  }

  const SourceManager& sources_;
  std::uint32_t file_;
  std::string_view text_;
  std::vector<SourceToken> tokens_;
};

std::string valueOf(const SymbolInfo& symbol) {
  if (symbol.symbol == nullptr || !symbol.constant) return {};
  if (symbol.kind == SymbolKind::Value) {
    return textOf(static_cast<const NamedValue*>(symbol.symbol)->value);
  }
  const auto& variable = *static_cast<const VarSymbol*>(symbol.symbol);
  std::string computed = constantText(variable);
  if (!computed.empty() || variable.initial == nullptr) return computed;
  return std::string(TreeBuilder::source(*variable.initial));
}

// A word that is no name: a keyword, of which the end of a block belongs to its beginning.
std::string topicOf(std::string_view word) {
  std::string topic = inCapitals(word);
  const bool end = topic.compare(0, 4, "END_") == 0;
  return end && constructNamed(topic.substr(4)) != nullptr ? topic.substr(4) : topic;
}

bool isOperatorSign(std::string_view mark) {
  return mark.find_first_of("()[]{},;.:") == std::string_view::npos || mark == ":=";
}

// `%MW5`: of an area the letter and of a size the letter, none for a bit.
void describeAddress(const std::string& address, Hover& hover) {
  hover.address = address;
  const char area = address.size() > 1 ? address[1] : '\0';
  const char* const name = area == 'I'   ? "inputs"
                           : area == 'Q' ? "outputs"
                           : area == 'M' ? "memory"
                                         : nullptr;
  if (name == nullptr) return;
  const char size = address.size() > 2 ? address[2] : '\0';
  const char* const width = size == 'B'   ? "A byte (8 bits)"
                            : size == 'W' ? "A word (16 bits)"
                            : size == 'D' ? "A double word (32 bits)"
                            : size == 'L' ? "A long word (64 bits)"
                                          : "A bit";
  hover.comment = std::string(width) + " of the " + name + '.';
}

std::optional<Hover> wordAt(const ProgramView& view, vel::TextLocation place) {
  const std::string_view text = view.program().sources.text(place.file());
  for (const SourceToken& token : sourceTokens(text)) {
    if (token.span.begin > place.offset()) break;
    using Kind = SourceToken::Kind;
    const bool mark = token.kind == Kind::Mark;
    const bool word = token.kind == Kind::Keyword || token.kind == Kind::Name ||
                      token.kind == Kind::Truth || token.kind == Kind::Address;
    const std::uint32_t last = mark ? token.span.end - 1 : token.span.end;
    if (!(word || mark) || last < place.offset()) continue;
    const std::string_view source =
        text.substr(token.span.begin, token.span.end - token.span.begin);
    Hover hover;
    hover.range = {vel::TextLocation(place.file(), token.span.begin),
                   token.span.end - token.span.begin};
    if (token.kind == Kind::Address) {
      describeAddress(inCapitals(source), hover);
    } else if (word || isOperatorSign(source)) {
      hover.topic = topicOf(source);
    }
    return hover;
  }
  return {};
}

}  // namespace

std::string declarationText(const ProgramView& view, SymbolId id) {
  const SymbolInfo& symbol = view.symbols()[id];
  if (!symbol.isDeclared()) return {};
  switch (symbol.kind) {
    case SymbolKind::Program:
    case SymbolKind::Function:
    case SymbolKind::FunctionBlock:
      return unitText(static_cast<const Unit&>(*symbol.node));
    case SymbolKind::Structure:
    case SymbolKind::Enumeration:
    case SymbolKind::Type:
      return "TYPE\n  " + std::string(TreeBuilder::source(*symbol.node)) + ";\nEND_TYPE";
    case SymbolKind::Member:
      return variableText(symbol);
    case SymbolKind::Value:
    case SymbolKind::Task:
    case SymbolKind::Instance:
      return std::string(TreeBuilder::source(*symbol.node));
    case SymbolKind::Configuration:
      return "CONFIGURATION " + symbol.name;
    case SymbolKind::Resource:
      return "RESOURCE " + symbol.name;
    default:
      break;
  }
  const VarBlock* const block = isVariable(symbol.kind) ? blockOf(symbol) : nullptr;
  if (block == nullptr) return symbol.name;
  std::string text(sectionOf(block->section));
  if (block->constant) text += " CONSTANT";
  if (block->retention == Retention::Retain) text += " RETAIN";
  if (block->retention == Retention::NonRetain) text += " NON_RETAIN";
  return text + "\n  " + variableText(symbol) + "\nEND_VAR";
}

std::string commentText(const ProgramView& view, SymbolId id) {
  const SymbolInfo& symbol = view.symbols()[id];
  if (!symbol.isDeclared()) return {};
  const Comments comments(view.program().sources, symbol.extent.begin.file());
  if (!isUnit(symbol.kind)) return comments.of(symbol.extent);
  const std::uint32_t named = symbol.nameRange.begin.offset() + symbol.nameRange.length;
  return Comments::joined(comments.above(symbol.extent.begin.offset()), comments.besides(named));
}

std::optional<Hover> hoverAt(const ProgramView& view, vel::TextLocation place) {
  const Occurrence* const found = view.occurrences().at(place);
  if (found == nullptr) return wordAt(view, place);
  const SymbolInfo& symbol = view.symbols()[found->symbol];
  const bool address = !symbol.isDeclared() && symbol.name.substr(0, 1) == "%";
  if (address) return wordAt(view, place);
  Hover hover;
  hover.range = found->range;
  if (!symbol.isDeclared()) {
    hover.topic = inCapitals(symbol.name);
    return hover;
  }
  const bool unit = symbol.standard && isUnit(symbol.kind);
  if (unit) hover.topic = inCapitals(symbol.name);
  hover.declaration = declarationText(view, found->symbol);
  hover.comment = commentText(view, found->symbol);
  hover.value = valueOf(symbol);
  const vel::SymbolDataType* const type = view.symbols().dataType(found->symbol);
  if (type == nullptr || isUnit(symbol.kind)) return hover;
  hover.type = displayName(type);
  if (symbol.kind == SymbolKind::Value) return hover;
  const ASTNode* const location = symbol.node->leaf(VarDecl::kAddress);
  if (location != nullptr) hover.address = inCapitals(TreeBuilder::source(*location));
  Layouts layouts;
  if (const auto layout = layouts.of(type)) hover.bytes = layout->size;
  return hover;
}

}  // namespace refhost
