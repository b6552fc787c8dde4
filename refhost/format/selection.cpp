// Finds the lines that must be formatted together. The layout of a piece depends on the source in
// places: if only some of these were changed, formatting once more would change others.
#include <algorithm>
#include <cstddef>

#include "refhost/format/piece.h"

namespace refhost::format {

namespace {

class Selection {
 public:
  Selection(const Pieces& pieces, std::string_view text) : pieces_(pieces), text_(text) {}

  Span with(Span range) {
    findTies();
    Span lines = wholeLines(range);
    for (const Span& tie : ties_) {
      if (tie.end < lines.begin || tie.begin > lines.end) continue;
      lines = {std::min(lines.begin, tie.begin), std::max(lines.end, tie.end)};
    }
    return lines;
  }

 private:
  void findTies() {
    std::size_t comments = 0;  // the first of those before the token
    std::size_t line = 0;      // the first piece of the current one
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
      const Piece& piece = pieces_[i];
      // Its lines move with the first one.
      if (piece.severalLines) tie(piece.span);
      if (piece.before == Break::Line && !piece.below) line = i;
      // It is compared with the comment above it, whose place depends on all of the line.
      if (piece.below) tie({pieces_[line].span.begin, piece.span.end});
      // Joins lines.
      const bool joins = i > 0 && piece.newlines > 0 && piece.outNewlines == 0;
      if (joins) tie({pieces_[i - 1].span.end, piece.span.begin});
      if (!piece.isToken()) continue;
      // Comments are indented by what they were in comparison with the token.
      const bool compared = piece.commentLevel != piece.outerCommentLevel && comments < i;
      if (compared) tie({pieces_[comments].span.begin, piece.span.begin});
      comments = i + 1;
    }
    mergeTies();
  }

  void tie(Span span) { ties_.push_back(wholeLines(span)); }

  void mergeTies() {
    std::sort(ties_.begin(), ties_.end(),
              [](const Span& a, const Span& b) { return a.begin < b.begin; });
    std::vector<Span> merged;
    for (const Span& next : ties_) {
      if (!merged.empty() && next.begin <= merged.back().end) {
        merged.back().end = std::max(merged.back().end, next.end);
      } else {
        merged.push_back(next);
      }
    }
    ties_ = std::move(merged);
  }

  Span wholeLines(Span span) const {
    const std::string_view before = text_.substr(0, span.begin);
    const std::size_t begin = before.find_last_of(kLineEnds) + 1;
    const std::size_t end = std::min(text_.find_first_of(kLineEnds, span.end), text_.size());
    return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
  }

  const Pieces& pieces_;
  std::string_view text_;
  std::vector<Span> ties_;  // whole lines that are formatted together
};

}  // namespace

Span linesWith(const Pieces& pieces, std::string_view text, Span range) {
  return Selection(pieces, text).with(range);
}

}  // namespace refhost::format
