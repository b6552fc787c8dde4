#include "refhost/editor/removal_fixes.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/operator.h"
#include "refhost/editor/node_search.h"
#include "refhost/editor/occurrences.h"
#include "refhost/editor/source_tokens.h"
#include "refhost/services/derived_types.h"
#include "refhost/services/unit_symbol.h"
#include "refhost/syntax/insertions.h"

namespace refhost {

using Type = vel::SymbolDataType;
using vel::TreeBuilder;

namespace {

std::uint32_t endBehind(const ASTNode& node) { return node.pos().offset() + rangeOf(node).length; }

// True if something is called that may do more than give a value.
bool calls(const ASTNode& node) {
  if (const Call* const call = callIn(&node)) {
    const bool plain = call->op() != nullptr && call->traits()->givesValue() &&
                       call->traits()->family != OperatorFamily::DirectIo &&
                       call->traits()->family != OperatorFamily::Other;
    if (!plain && call->standard() == nullptr) return true;
  }
  for (int i = 0; i < node.leavesCount(); ++i) {
    if (node.leaf(i) != nullptr && calls(*node.leaf(i))) return true;
  }
  return false;
}

bool initialCalls(const Type* type);

bool initialCalls(const VarSymbol& variable) {
  for (const Expr* const initial : {variable.initial, variable.typeInitial}) {
    if (initial != nullptr && calls(*initial)) return true;
  }
  return !variable.indirect && initialCalls(variable.dataType());
}

// True if the initial value of a variable of the type calls something.
bool initialCalls(const Type* type) {
  const auto partCalls = [](const auto& part) { return initialCalls(*part); };
  if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
    const bool own = array->elementInitial != nullptr && calls(*array->elementInitial);
    return own || initialCalls(array->element);
  }
  if (const auto* const structure = dynamic_cast<const StructType*>(type)) {
    return std::any_of(structure->members().begin(), structure->members().end(), partCalls);
  }
  if (const auto* const instance = dynamic_cast<const InstanceType*>(type)) {
    const auto& variables = instance->unit->variables();
    return std::any_of(variables.begin(), variables.end(), partCalls);
  }
  return false;
}

// True if nothing but a comment that ends there stands from `begin` to `end`, the end of the line.
bool isCommentAtMost(std::string_view text, std::uint32_t begin, std::uint32_t end) {
  const std::vector<SourceToken> tokens = sourceTokens(text.substr(begin, end - begin));
  if (tokens.empty()) return true;
  // One that goes on in the next line covers the line break, too.
  const bool ends = begin + tokens[0].span.end < end || end == text.size();
  return tokens.size() == 1 && tokens[0].kind == SourceToken::Kind::Comment && ends;
}

// Removes one variable with the comment behind it.
class Removal {
 public:
  Removal(const AnalysedProgram& program, const ASTNode& name)
      : program_(program),
        name_(name),
        declaration_(static_cast<const VarDecl&>(*name.parent())),
        text_(program.sources.text(name.pos().file())) {}

  void addTo(std::vector<Fix>& fixes) const {
    Fix fix{"Remove '" + std::string(TreeBuilder::source(name_)) + "'", edits()};
    if (fix.edits.empty() || hasEffect() || isMissed(fix)) return;
    fixes.push_back(std::move(fix));
  }

 private:
  std::vector<TextEdit> edits() const {
    int index = VarDecl::kFirstName;
    while (declaration_.leaf(index) != &name_) ++index;
    if (index + 1 < declaration_.leavesCount()) {
      return followedBy(declaration_.leaf(index + 1)->pos().offset());
    }
    if (index > VarDecl::kFirstName) return behind(endBehind(*declaration_.leaf(index - 1)));
    const std::size_t mark = text_.find_first_not_of(" \t\r\n", endBehind(declaration_));
    if (mark == std::string::npos || text_[mark] != ';') return {};
    return {removed(declaration_.pos().offset(), static_cast<std::uint32_t>(mark) + 1)};
  }

  // The variable and its comma, in front of the name at `next`.
  std::vector<TextEdit> followedBy(std::uint32_t next) const {
    const std::uint32_t end = commaIn(endBehind(name_), next) + 1;
    const std::uint32_t begin = name_.pos().offset();
    const bool blank =
        text_.substr(end, next - end).find_first_not_of(" \t\r\n") == std::string::npos;
    const bool joins = blank && !beginsLine(text_, begin);
    return {joins ? edit(begin, next) : removed(begin, end)};
  }

  // The last variable, and the comma behind the one that ends at `end`.
  std::vector<TextEdit> behind(std::uint32_t end) const {
    const std::uint32_t begin = name_.pos().offset();
    const std::uint32_t comma = commaIn(end, begin);
    const TextEdit own = removed(begin, endBehind(name_));
    const std::string_view between = text_.substr(comma + 1, begin - comma - 1);
    const bool commented = between.find_first_not_of(" \t\r\n") != std::string::npos;
    const bool wholeLine = text_[own.range.begin.offset() + own.range.length - 1] == '\n';
    if (!commented && !wholeLine) return {edit(comma, endBehind(name_))};
    return {edit(comma, comma + 1), own};
  }

  std::uint32_t commaIn(std::uint32_t begin, std::uint32_t end) const {
    for (const SourceToken& token : sourceTokens(text_.substr(begin, end - begin))) {
      if (token.token == ',') return begin + token.span.begin;
    }
    return begin;
  }

  TextEdit edit(std::uint32_t begin, std::uint32_t end) const {
    return {{vel::TextLocation(name_.pos().file(), begin), end - begin}, ""};
  }

  // The part with its line if nothing but a comment stands there besides, else with the blanks
  // behind it.
  TextEdit removed(std::uint32_t begin, std::uint32_t end) const {
    const auto lineEnd =
        static_cast<std::uint32_t>(std::min(text_.find('\n', end), text_.size() - 1)) + 1;
    if (beginsLine(text_, begin) && isCommentAtMost(text_, end, lineEnd)) {
      return edit(begin - static_cast<std::uint32_t>(indentationAt(text_, begin).size()), lineEnd);
    }
    return edit(begin, static_cast<std::uint32_t>(
                           std::min(text_.find_first_not_of(kBlanks, end), text_.size())));
  }

  bool hasEffect() const {
    const ASTNode* const initial = declaration_.leaf(VarDecl::kInitial);
    if (initial != nullptr && calls(*initial)) return true;
    const Unit* const unit = unitAround(program_.tree, name_.pos());
    for (const UnitSymbol* const symbol : program_.services.symbols.units()) {
      if (symbol->node != unit) continue;
      const VarSymbol* const variable = symbol->variable(TreeBuilder::source(name_));
      return variable != nullptr && initialCalls(*variable);
    }
    return false;
  }

  // True if another part of the program names something that is declared in what is removed: the
  // variable, or a value of its type.
  bool isMissed(const Fix& fix) const {
    const ASTNode* const type = declaration_.leaf(VarDecl::kType);
    const bool plain =
        type != nullptr && TreeBuilder::source(*type).find('(') == std::string_view::npos;
    if (plain && program_.tree.configured.empty()) return false;
    const auto isRemoved = [&fix](const SourceRange& range) {
      return std::any_of(fix.edits.begin(), fix.edits.end(), [&range](const TextEdit& edit) {
        const std::uint32_t begin = edit.range.begin.offset();
        return edit.range.begin.file() == range.begin.file() && begin <= range.begin.offset() &&
               range.begin.offset() < begin + edit.range.length;
      });
    };
    const Symbols symbols(program_);
    const Occurrences occurrences(program_, symbols);
    return std::any_of(
        occurrences.all().begin(), occurrences.all().end(), [&](const Occurrence& one) {
          return one.symbol != kNoSymbol && !isRemoved(one.range) &&
                 symbols[one.symbol].isDeclared() && isRemoved(symbols[one.symbol].nameRange);
        });
  }

  const AnalysedProgram& program_;
  const ASTNode& name_;
  const VarDecl& declaration_;
  std::string_view text_;
};

// A word without effect, with the blanks behind it.
void removeQualifier(const AnalysedProgram& program, const Diagnostic& message,
                     std::vector<Fix>& fixes) {
  const std::string_view text = program.sources.text(message.range.begin.file());
  const std::uint32_t begin = message.range.begin.offset();
  const std::string word(text.substr(begin, message.range.length));
  const std::vector<std::string_view> said = argumentsIn(message::kNotRetained, message.text);
  if (said.empty() || !equalIgnoringCase(said[0], word)) return;
  const std::size_t end =
      std::min(text.find_first_not_of(kBlanks, begin + word.size()), text.size());
  const SourceRange range{message.range.begin, static_cast<std::uint32_t>(end) - begin};
  fixes.push_back({"Remove '" + word + "'", {{range, ""}}});
}

}  // namespace

void addRemovals(const AnalysedProgram& program, const Diagnostic& message,
                 std::vector<Fix>& fixes) {
  if (message.code == message::kNotRetained.code) return removeQualifier(program, message, fixes);
  const bool unused =
      message.code == message::kNeverUsed.code || message.code == message::kUnusedInProgram.code;
  const ASTNode* const name = unused ? nodeWith(program.tree, message.range) : nullptr;
  const bool declares =
      name != nullptr && name->parent() != nullptr && kindOf(*name->parent()) == NodeKind::VarDecl;
  if (declares) Removal(program, *name).addTo(fixes);
}

}  // namespace refhost
