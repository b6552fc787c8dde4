#include "refhost/editor/folding.h"

#include <algorithm>

#include "grammar.h"
#include "hostkit/folding.h"
#include "refhost/diagnostics.h"
#include "refhost/editor/source_tokens.h"
#include "refhost/syntax/constructs.h"

namespace refhost {

namespace {

using FoldingKind = FoldingRange::Kind;
using Token = grammar::Parser::token;

class Folding {
 public:
  Folding(const ProgramView& view, std::uint32_t file)
      : view_(view),
        sources_(view.program().sources),
        file_(file),
        text_(sources_.text(file)),
        tokens_(sourceTokens(text_)) {}

  std::vector<FoldingRange> ranges() {
    foldBlocks();
    foldTrivia();
    foldTree();
    std::stable_sort(
        ranges_.begin(), ranges_.end(), [](const FoldingRange& a, const FoldingRange& b) {
          return a.firstLine != b.firstLine ? a.firstLine < b.firstLine : a.lastLine > b.lastLine;
        });
    const auto same = [](const FoldingRange& a, const FoldingRange& b) {
      return a.firstLine == b.firstLine && a.lastLine == b.lastLine;
    };
    ranges_.erase(std::unique(ranges_.begin(), ranges_.end(), same), ranges_.end());
    return std::move(ranges_);
  }

 private:
  std::uint32_t lineOf(std::uint32_t offset) const {
    return sources_.lineNumber(vel::TextLocation(file_, offset));
  }
  void add(std::uint32_t first, std::uint32_t last, FoldingKind kind) {
    if (last > first) ranges_.push_back({first, last, kind});
  }
  // From the line of `begin` to the one in front of that of `closer`.
  void addBlock(std::uint32_t begin, std::uint32_t closer) {
    add(lineOf(begin), lineOf(closer) - 1, FoldingKind::Code);
  }

  // What the grammar knows as a block: sections, types, structures, statements. A block without an
  // end is left out.
  void foldBlocks() {
    struct Open {
      const Construct* construct;
      std::uint32_t begin;  // of the branch
    };
    std::vector<Open> open;
    for (const SourceToken& token : tokens_) {
      if (token.kind != SourceToken::Kind::Keyword) continue;
      const TokenRole role = roleOf(token.token);
      const Construct* const construct = constructOf(token.token);
      if (role == TokenRole::Opener && !construct->isProgramUnit()) {
        open.push_back({construct, token.span.begin});
      } else if (role == TokenRole::Closer) {
        const auto opener = std::find_if(open.rbegin(), open.rend(), [&](const Open& block) {
          return block.construct == construct;
        });
        if (construct->isProgramUnit()) open.clear();
        if (construct->isProgramUnit() || opener == open.rend()) continue;
        addBlock(opener->begin, token.span.begin);
        open.erase(opener.base() - 1, open.end());
      } else if ((role == TokenRole::Elsif || role == TokenRole::Else) && !open.empty()) {
        addBlock(open.back().begin, token.span.begin);
        open.back().begin = token.span.begin;
      }
    }
  }

  void foldTrivia() {
    std::vector<std::uint32_t> regions;
    std::uint32_t first = 0;  // of line comments in consecutive lines
    std::uint32_t last = 0;
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
      const SourceToken& token = tokens_[i];
      const std::string_view text =
          text_.substr(token.span.begin, token.span.end - token.span.begin);
      const std::uint32_t line = lineOf(token.span.begin);
      const bool alone = i == 0 || lineOf(tokens_[i - 1].span.end) != line;
      const bool lineComment =
          token.kind == SourceToken::Kind::Comment && text[0] == '/' && text[1] == '/';
      if (lineComment && alone && first != 0 && line == last + 1) {
        last = line;
        continue;
      }
      if (first != 0) add(first, last, FoldingKind::Comment);
      first = lineComment && alone ? line : 0;
      last = first;
      if (token.kind == SourceToken::Kind::Comment && !lineComment) {
        add(line, lineOf(token.span.end - 1), FoldingKind::Comment);
      } else if (token.kind == SourceToken::Kind::Pragma) {
        if (isPragma(text, "region")) regions.push_back(line);
        if (isPragma(text, "endregion") && !regions.empty()) {
          add(regions.back(), line, FoldingKind::Region);
          regions.pop_back();
        }
      }
    }
    if (first != 0) add(first, last, FoldingKind::Comment);
  }

  static bool isPragma(std::string_view text, std::string_view word) {
    const std::size_t begin = text.find_first_not_of(" \t", 1);
    if (begin == std::string_view::npos) return false;
    text.remove_prefix(begin);
    const bool whole = text.size() > word.size() && !hostkit::isLetter(text[word.size()]);
    return whole && vel::equalIgnoringCase(text.substr(0, word.size()), word);
  }

  // What only the tree knows: units, whose words are names elsewhere, and the elements of a CASE.
  void foldTree() {
    for (SymbolId id = 0; id < view_.symbols().count(); ++id) {
      const SymbolInfo& symbol = view_.symbols()[id];
      const bool unit = isUnit(symbol.kind) || symbol.kind == SymbolKind::Resource;
      if (!unit || symbol.extent.begin.file() != file_ || symbol.extent.length == 0) continue;
      addBlock(symbol.extent.begin.offset(),
               symbol.extent.begin.offset() + symbol.extent.length - 1);
      const bool body = isUnit(symbol.kind) && symbol.node->leaf(Unit::kBody) != nullptr;
      if (body) foldElements(*symbol.node->leaf(Unit::kBody));
    }
  }

  void foldElements(const ASTNode& node) {
    if (kindOf(node) == NodeKind::CaseElement) {
      const SourceRange range = rangeOf(node);
      add(lineOf(range.begin.offset()), lineOf(range.begin.offset() + range.length - 1),
          FoldingKind::Code);
    }
    // Expressions have no statements.
    if (node.type() == vel::ASTType::Expression) return;
    for (int i = 0; i < node.leavesCount(); ++i) {
      if (node.leaf(i) != nullptr) foldElements(*node.leaf(i));
    }
  }

  const ProgramView& view_;
  const SourceManager& sources_;
  std::uint32_t file_;
  std::string_view text_;
  std::vector<SourceToken> tokens_;
  std::vector<FoldingRange> ranges_;
};

}  // namespace

std::vector<FoldingRange> foldingRangesOf(const ProgramView& view, std::uint32_t file) {
  return Folding(view, file).ranges();
}

}  // namespace refhost
