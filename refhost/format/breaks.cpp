// Decides which line breaks of the source stay: those between the lines of the structure, those at
// comments, and those at which a long line can be broken.
#include <algorithm>
#include <cstddef>

#include "grammar.h"
#include "refhost/format/piece.h"

namespace refhost::format {

namespace {

using Kind = grammar::Parser::token;

bool mayStay(const Piece& last, const Piece& next) {
  if (last.opens() || next.closes()) return !(last.opens() && next.closes());
  return last.kind == ',' || last.binary || next.binary;
}

class LineBreaks {
 public:
  explicit LineBreaks(Pieces& pieces) : pieces_(pieces) {}

  void run() {
    std::size_t comments = 0;  // the first of those before the token
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
      if (!pieces_[i].isToken()) continue;
      begin_ = comments;
      token_ = i;
      if (pieces_[i].before == Break::Line) depth_ = 0;
      if (pieces_[i].before == Break::Line) {
        betweenLines();
      } else {
        withinLine();
      }
      takePins();
      markTrailing();
      countBlankLines();
      if (pieces_[i].opens()) ++depth_;
      if (pieces_[i].closes()) --depth_;
      comments = i + 1;
    }
  }

 private:
  // A comment in the line of the token before it stays there, and one in front of a token, too.
  void betweenLines() {
    Piece& token = pieces_[token_];
    bool own = false;  // comments have lines of their own from here on
    for (std::size_t i = begin_; i < token_; ++i) {
      Piece& comment = pieces_[i];
      const bool verbatim = comment.kind == kVerbatim;
      if (comment.newlines == 0 && !verbatim && begin_ != 0) continue;
      if (comment.newlines == 0 && !verbatim && own) continue;
      own = true;
      comment.before = Break::Line;
      const bool further = comment.column > token.column;
      comment.level = further ? token.outerCommentLevel : token.commentLevel;
    }
    if (!own || token.newlines > 0 || token.kind == Kind::YYEOF) return;
    std::size_t first = token_ - 1;
    while (pieces_[first].before != Break::Line) --first;
    if (pieces_[first].kind == kVerbatim) return;
    token.before = Break::None;
    pieces_[first].level = token.level;
  }

  void withinLine() {
    Piece& token = pieces_[token_];
    const bool bare = begin_ == token_;
    for (std::size_t i = begin_; i < token_; ++i) {
      const bool breaks = pieces_[i].newlines > 0 || pieces_[i].kind == kVerbatim;
      pieces_[i].before = breaks ? Break::Within : Break::None;
    }
    if (!bare) {
      const bool breaks = token.newlines > 0 || pieces_[token_ - 1].kind == kVerbatim;
      token.before = breaks ? Break::Within : Break::None;
      shifted_ = 0;
      return;
    }
    if (token.kind == ',') {
      // The line is broken behind the comma.
      shifted_ = token.newlines;
      return;
    }
    const std::uint32_t newlines = std::max(token.newlines, shifted_);
    shifted_ = 0;
    if (newlines == 0) return;
    const Piece& last = pieces_[token_ - 1];
    const bool value = depth_ == 0 && (last.kind == Kind::ASSIGN || last.kind == Kind::BINDS);
    if (value || mayStay(last, token)) {
      token.before = Break::Within;
      token.newlines = newlines;
    }
  }

  void takePins() {
    for (std::size_t i = begin_; i <= token_; ++i) {
      Piece& piece = pieces_[i];
      if (piece.pinned) {
        piece.before = Break::None;
      } else if (piece.parted && piece.before == Break::None) {
        piece.before = Break::Within;
      }
    }
  }

  // Comments behind code, up to the end of the line.
  void markTrailing() {
    if (begin_ == 0 || begin_ == token_ || pieces_[begin_].begins()) return;
    const auto first = pieces_.begin() + static_cast<std::ptrdiff_t>(begin_);
    const auto behind = pieces_.begin() + static_cast<std::ptrdiff_t>(token_ + 1);
    first->trailing = std::any_of(first, behind, [](const Piece& piece) { return piece.begins(); });
    for (auto comment = first + 1; comment + 1 != behind; ++comment) {
      const Piece& above = *(comment - 1);
      comment->below = (above.trailing || above.continues) && comment->newlines == 1 &&
                       comment->begins() && (comment + 1)->begins() && comment->kind != kVerbatim;
      comment->continues = comment->below && comment->column == above.column;
    }
  }

  void countBlankLines() {
    bool any = false;
    for (std::size_t i = begin_; i <= token_; ++i) {
      Piece& piece = pieces_[i];
      if (!piece.begins()) continue;
      piece.outNewlines = i == 0 ? 0 : std::min(piece.newlines, 2U);
      if (i != 0) piece.outNewlines = std::max(piece.outNewlines, 1U);
      any = any || piece.outNewlines == 2;
    }
    if (pieces_[token_].kind == Kind::YYEOF) pieces_[token_].outNewlines = token_ == 0 ? 0 : 1;
    if (!pieces_[token_].unit || any) return;
    for (std::size_t i = begin_; i <= token_; ++i) {
      if (i == 0 || pieces_[i].before != Break::Line) continue;
      // Comments at the begin of the file are not those of the first unit.
      if (begin_ != 0) pieces_[i].outNewlines = 2;
      return;
    }
  }

  Pieces& pieces_;
  std::size_t begin_ = 0;      // of the comments before the current token
  std::size_t token_ = 0;      // the current token
  std::uint32_t shifted_ = 0;  // line breaks in front of the ',' before it
  int depth_ = 0;              // of brackets in the line
};

}  // namespace

void breakLines(Pieces& pieces) { LineBreaks(pieces).run(); }

}  // namespace refhost::format
