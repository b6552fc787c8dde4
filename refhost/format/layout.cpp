// Indents the lines, breaks those that are too long, and aligns the comments behind them.
#include <algorithm>
#include <cstddef>
#include <limits>

#include "grammar.h"
#include "refhost/format/piece.h"
#include "refhost/format/spacing.h"
#include "refhost/syntax/constructs.h"

namespace refhost::format {

namespace {

using Kind = grammar::Parser::token;

constexpr std::uint32_t kContinuation = 4;  // further indentation within a statement
// What stands behind a bracket further to the right is not aligned with it.
constexpr std::uint32_t kMaxAligned = 60;
constexpr std::uint32_t kMaxCommented = 60;  // width of code that moves comments to the right
constexpr std::uint32_t kCommentGap = 2;

// Writes the lines of the structure one by one.
class Layout {
 public:
  explicit Layout(Pieces& pieces) : pieces_(pieces) {}

  void run() {
    std::size_t begin = 0;
    while (begin < pieces_.size()) {
      std::size_t end = begin + 1;
      while (end < pieces_.size() && pieces_[end].before != Break::Line) ++end;
      begin_ = begin;
      end_ = end;
      // Columns of arguments must not count when lines are broken: those that are broken here have
      // none the first time.
      write(Pass::Breaks);
      alignArguments(pieces_, begin, end);
      write(Pass::Columns);
      begin = end;
    }
    alignComments();
  }

 private:
  struct Bracket {
    std::uint32_t inner;   // the column of what begins a line in the brackets
    std::uint32_t closer;  // the same for the closing bracket
  };
  struct CommentedLine {
    Piece* comment;
    std::uint32_t width;  // of the code
  };

  enum class Pass : bool { Breaks, Columns };

  void write(Pass pass) {
    brackets_.clear();
    behindName_ = false;
    for (std::size_t at = begin_; at < end_;) at = writeLine(at, pass);
  }

  // Writes one line of the text, from the piece `first` on, and returns the piece behind it.
  std::size_t writeLine(std::size_t first, Pass pass) {
    Piece& head = pieces_[first];
    const std::uint32_t base = pieces_[begin_].level * kIndentation;
    lineIndentation_ = first == begin_ ? base : continuation(head, base);
    head.outBlanks = head.kind == Kind::YYEOF ? 0 : lineIndentation_;
    const std::size_t end = pass == Pass::Breaks ? lineEnd(first) : breakFrom(first + 1);
    std::uint32_t column = head.outBlanks;
    if (pass == Pass::Columns && !head.continues) noteLine(head);
    for (std::size_t i = first; i < end; ++i) {
      Piece& piece = pieces_[i];
      if (i > first) {
        piece.outNewlines = 0;
        piece.outBlanks = (piece.blank ? 1 : 0) + piece.pad;
        if (piece.trailing && pass == Pass::Columns) noteComment(piece, column);
        column += piece.outBlanks;
      }
      column = piece.columnBehind(column);
      if (piece.isToken()) behindName_ = brackets_.empty() && piece.kind == ',';
      if (piece.opens()) openBracket(i, column);
      if (piece.closes() && !brackets_.empty()) brackets_.pop_back();
    }
    return end;
  }

  std::uint32_t continuation(const Piece& piece, std::uint32_t base) const {
    if (!brackets_.empty()) {
      return piece.closes() ? brackets_.back().closer : brackets_.back().inner;
    }
    const bool word = piece.kind == Kind::THEN || piece.kind == Kind::DO || piece.kind == Kind::OF;
    // The names of a declaration stand below each other.
    const bool name = behindName_ && pieces_[begin_].declares;
    return word || name ? base : base + kContinuation;
  }

  void openBracket(std::size_t index, std::uint32_t column) {
    const bool hangs = index + 1 < end_ && pieces_[index + 1].begins();
    if (hangs) {
      const std::uint32_t inner = std::min(lineIndentation_ + kIndentation, kMaxAligned);
      brackets_.push_back({inner, lineIndentation_});
    } else if (column > kMaxAligned) {
      const std::uint32_t inner = std::min(lineIndentation_ + kContinuation, kMaxAligned);
      brackets_.push_back({inner, lineIndentation_});
    } else {
      brackets_.push_back({column, column - 1});
    }
  }

  // The piece behind the line that begins with `first`. A line that would be too long is broken at
  // the best place.
  std::size_t lineEnd(std::size_t first) {
    std::uint32_t column = pieces_[first].outBlanks;
    int depth = 0;
    int bestCost = kNever;
    std::size_t best = 0;
    for (std::size_t i = first; i < end_; ++i) {
      const Piece& piece = pieces_[i];
      // Comments may be as long as they are.
      if (i > first && (piece.begins() || piece.trailing)) return breakFrom(i);
      if (piece.closes()) --depth;
      if (i > first) {
        column += (piece.blank ? 1 : 0) + piece.pad;
        const int cost = costOfBreak(i, depth);
        if (cost != kNever && cost <= bestCost) {
          bestCost = cost;
          best = i;
        }
      }
      column = piece.columnBehind(column);
      if (column > kMaxWidth && best != 0) {
        pieces_[best].before = Break::Within;
        pieces_[best].outNewlines = 1;
        return best;
      }
      if (piece.opens()) ++depth;
    }
    return end_;
  }

  // The next piece that begins a line.
  std::size_t breakFrom(std::size_t index) const {
    while (index < end_ && !pieces_[index].begins()) ++index;
    return index;
  }

  static constexpr int kNever = std::numeric_limits<int>::max();

  // What a line break before the piece costs: outer brackets are broken before inner ones.
  int costOfBreak(std::size_t index, int depth) const {
    const Piece& piece = pieces_[index];
    const Piece& last = pieces_[index - 1];
    constexpr int kDepth = 16;
    const bool fixed = !piece.isToken() || !last.isToken() || piece.pinned || piece.whole;
    if (fixed || piece.kind == Kind::YYEOF) return kNever;
    if (last.kind == ',') return depth * kDepth;
    if (last.binary) return depth * kDepth + bindingOf(last);
    // Behind each of several brackets it would only lead further to the right.
    if (last.opens() && !piece.opens() && !piece.closes()) return depth * kDepth + kDepth / 2;
    return kNever;
  }

  static bool isBlockWord(int kind) {
    const TokenRole role = roleOf(kind);
    return role >= TokenRole::Opener && role <= TokenRole::Until;
  }

  void noteLine(const Piece& head) {
    std::size_t token = begin_;
    while (token < end_ && !pieces_[token].isToken()) ++token;
    if (head.outNewlines > 1) alignComments();
    if (token == end_) return;  // a comment in a line of its own
    const bool declares = pieces_[token].declares;
    const bool opensOrCloses = !declares && isBlockWord(pieces_[token].kind);
    const bool apart = &head == &pieces_[begin_] && (opensOrCloses || behindBlockWord_);
    if (!joins_ || declares != declares_ || apart) alignComments();
    behindBlockWord_ = opensOrCloses;
    declares_ = declares;
    joins_ = declares;
  }

  void noteComment(Piece& comment, std::uint32_t width) {
    comments_.push_back({&comment, width});
    joins_ = true;
  }

  // Aligns the comments behind lines that follow each other.
  void alignComments() {
    std::uint32_t column = 0;
    for (const CommentedLine& line : comments_) {
      if (line.width <= kMaxCommented) column = std::max(column, line.width + kCommentGap);
    }
    for (const CommentedLine& line : comments_) {
      const std::uint32_t place = std::max(column, line.width + kCommentGap);
      line.comment->outBlanks = place - line.width;
      for (Piece* next = line.comment + 1; next->continues; ++next) next->outBlanks = place;
    }
    comments_.clear();
  }

  Pieces& pieces_;
  std::size_t begin_ = 0;  // of the line of the structure
  std::size_t end_ = 0;
  std::uint32_t lineIndentation_ = 0;
  std::vector<Bracket> brackets_;
  bool behindName_ = false;              // the last token is a comma outside of brackets
  std::vector<CommentedLine> comments_;  // that are aligned with each other
  bool declares_ = false;                // the line before is part of a declaration
  bool behindBlockWord_ = false;         // the line before opens, divides or closes a block
  bool joins_ = false;                   // a comment in the next line belongs to them
};

}  // namespace

void layOut(Pieces& pieces) { Layout(pieces).run(); }

}  // namespace refhost::format
