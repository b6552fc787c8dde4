// Divides the tokens into lines: which begin one, and how far it is indented.
#include <cstddef>

#include "grammar.h"
#include "refhost/format/piece.h"
#include "refhost/syntax/constructs.h"

namespace refhost::format {

namespace {

using Kind = grammar::Parser::token;
using Blocks = Construct::Kind;

class Structure {
 public:
  explicit Structure(Pieces& pieces) : pieces_(pieces) {
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      if (pieces[i].isToken()) tokens_.push_back(i);
    }
  }

  void run() {
    for (at_ = 0; at_ < tokens_.size(); ++at_) {
      beginLine();
      take();
      if (at_ == headerEnd_) lineEnds_ = true;
    }
  }

 private:
  struct Block {
    const Construct* construct;
    std::uint16_t level;
    bool inHeader;
    bool hasUntil = false;
    bool inElse = false;

    bool hasLabels() const { return construct->opener == Kind::CASE && !inHeader && !inElse; }
    std::uint16_t inner() const { return static_cast<std::uint16_t>(level + 1); }
    std::uint16_t body() const { return static_cast<std::uint16_t>(level + (hasLabels() ? 2 : 1)); }
  };
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  Piece& token(std::size_t index) { return pieces_[tokens_[index]]; }
  int kind(std::size_t index) const {
    return index < tokens_.size() ? pieces_[tokens_[index]].kind : static_cast<int>(Kind::YYEOF);
  }
  int previous() const { return at_ > 0 ? kind(at_ - 1) : 0; }
  bool inDeclarations() const {
    return !blocks_.empty() && blocks_.back().construct->holdsDeclarations();
  }
  bool inConfiguration() const {
    return !blocks_.empty() && blocks_.front().construct->opener == Kind::CONFIGURATION;
  }

  void setLine(std::uint16_t level, std::uint16_t comments, std::uint16_t outer) {
    Piece& piece = token(at_);
    piece.before = Break::Line;
    piece.level = level;
    piece.commentLevel = comments;
    piece.outerCommentLevel = outer;
    level_ = level;
    lineEnds_ = false;
    depth_ = 0;
    declares_ = false;
    label_ = false;
  }

  void beginLine() {
    const int here = kind(at_);
    const TokenRole role = roleOf(here);
    if (role == TokenRole::Closer && !blocks_.empty()) {
      const Block& block = blocks_.back();
      const std::uint16_t comments = block.hasUntil ? block.level : block.body();
      setLine(block.level, comments, comments);
      return;
    }
    const bool branch =
        role == TokenRole::Elsif || role == TokenRole::Else || role == TokenRole::Until;
    if (branch && !blocks_.empty()) {
      const Block& block = blocks_.back();
      setLine(block.level, block.level, block.body());
      return;
    }
    if (here == Kind::YYEOF) {
      setLine(0, 0, 0);
      return;
    }
    if (!lineEnds_ || (here == ';' && isFinished(previous()))) return;
    beginItem(here);
  }

  // True of a token behind which a ';' stands in the same line.
  bool isFinished(int last) {
    if (last == ';' || roleOf(last) == TokenRole::Closer) return true;
    return at_ > 0 && at_ - 1 == headerEnd_;
  }

  void beginItem(int here) {
    if (blocks_.empty()) {
      setLine(0, 0, 0);
      token(at_).unit = here != ';';
      return;
    }
    const Block& block = blocks_.back();
    if (block.hasLabels()) {
      if (isLabel(at_)) {
        const bool first = previous() == Kind::OF;
        setLine(block.inner(), block.inner(), first ? block.inner() : block.body());
        label_ = true;
      } else {
        setLine(block.body(), block.body(), block.body());
      }
      return;
    }
    const bool outer = opensVariables(here) && block.construct->isProgramUnit();
    const std::uint16_t level = outer ? block.level : block.inner();
    setLine(level, level, level);
    declares_ = inDeclarations();
    token(at_).declares = declares_ && here != ';';
  }

  // True if a label of a CASE begins at the token.
  bool isLabel(std::size_t from) const {
    for (std::size_t i = from; i < tokens_.size(); ++i) {
      const int here = kind(i);
      if (here == ':') return true;
      if (here == Kind::ASSIGN || here == Kind::BINDS || isStructural(here)) return false;
      if (roleOf(here) == TokenRole::StatementWord) return false;
    }
    return false;
  }

  // True if the only statement behind the ':' of a label begins in its line.
  bool keepsStatement() const {
    for (std::size_t i = tokens_[at_] + 1; i < pieces_.size(); ++i) {
      if (pieces_[i].newlines > 0) return false;
      if (pieces_[i].isToken()) break;
    }
    for (std::size_t i = at_ + 1; i < tokens_.size(); ++i) {
      const int here = kind(i);
      if (here == ';') {
        const int next = kind(i + 1);
        return next == Kind::ELSE || next == Kind::END_CASE || isLabel(i + 1);
      }
      if (isStructural(here)) return false;
    }
    return false;
  }

  void take() {
    const int here = kind(at_);
    switch (roleOf(here)) {
      case TokenRole::Opener:
        if (here == Kind::PROGRAM && inConfiguration()) return;
        open(*constructOf(here));
        return;
      case TokenRole::Closer:
        if (!blocks_.empty()) blocks_.pop_back();
        declares_ = false;
        // An initial value may follow END_STRUCT.
        lineEnds_ = kind(at_ + 1) != Kind::ASSIGN;
        return;
      case TokenRole::HeaderEnd:
        if (depth_ == 0 && !blocks_.empty() && blocks_.back().inHeader &&
            blocks_.back().construct->headerEnd == here) {
          blocks_.back().inHeader = false;
          lineEnds_ = true;
        }
        return;
      case TokenRole::Elsif:
        if (!blocks_.empty()) blocks_.back().inHeader = true;
        return;
      case TokenRole::Else:
        if (!blocks_.empty()) blocks_.back().inElse = true;
        lineEnds_ = true;
        return;
      case TokenRole::Until:
        if (!blocks_.empty()) blocks_.back().hasUntil = true;
        return;
      case TokenRole::Semicolon:
        lineEnds_ = true;
        return;
      case TokenRole::OpenBracket:
        ++depth_;
        return;
      case TokenRole::CloseBracket:
        --depth_;
        return;
      default:
        takeOther(here);
    }
  }

  void takeOther(int here) {
    if (here >= Kind::CONSTANT && here <= Kind::PERSISTENT && opening_) {
      endOpening();
      return;
    }
    if (label_ && here == ':' && depth_ == 0) {
      token(at_).label = true;
      label_ = false;
      lineEnds_ = !keepsStatement();
    }
    if (declares_ && depth_ == 0) mark(here);
  }

  void mark(int here) {
    Piece& piece = token(at_);
    if (piece.declares) {
      marked_ = Mark::None;
      return;
    }
    if (here == Kind::AT && marked_ == Mark::None && previous() != '.') piece.mark = Mark::Address;
    if (here == ':' && marked_ < Mark::Colon) piece.mark = Mark::Colon;
    if (here == Kind::ASSIGN || here == Kind::BINDS) piece.mark = Mark::Value;
    if (piece.mark != Mark::None) marked_ = piece.mark;
  }

  void open(const Construct& construct) {
    blocks_.push_back({&construct, level_, construct.headerEnd != 0});
    depth_ = 0;
    declares_ = false;
    switch (construct.kind) {
      case Blocks::Unit:
      case Blocks::Resource:
        headerEnd_ = headerEnd(construct.opener);
        break;
      case Blocks::Variables:
        endOpening();
        break;
      default:
        lineEnds_ = construct.headerEnd == 0;
        break;
    }
  }

  // The words behind VAR belong to its line.
  void endOpening() {
    const int next = kind(at_ + 1);
    opening_ = next >= Kind::CONSTANT && next <= Kind::PERSISTENT;
    lineEnds_ = !opening_;
  }

  // The index of the last token in the header of a unit or a resource.
  std::size_t headerEnd(int opener) const {
    if (opener == Kind::SETUP || opener == Kind::TEARDOWN || opener == Kind::TYPE) return at_;
    if (opener == Kind::RESOURCE) return kind(at_ + 2) == Kind::ON ? at_ + 3 : at_ + 1;
    const bool typed = opener == Kind::FUNCTION && kind(at_ + 2) == ':';
    return typed ? typeEnd(at_ + 3) : at_ + 1;
  }

  std::size_t typeEnd(std::size_t index) const {
    for (;;) {
      switch (kind(index)) {
        case Kind::ARRAY:
          index = groupEnd(index + 1) + 2;  // behind OF
          break;
        case Kind::POINTER:
        case Kind::REFERENCE:
          index += 2;
          break;
        case Kind::REF_TO:
          ++index;
          break;
        case '(':
          return groupEnd(index);
        default:
          return roleOf(kind(index + 1)) == TokenRole::OpenBracket ? groupEnd(index + 1) : index;
      }
    }
  }

  // The index of the bracket that closes the one at `index`.
  std::size_t groupEnd(std::size_t index) const {
    int depth = 0;
    for (; index + 1 < tokens_.size(); ++index) {
      const TokenRole role = roleOf(kind(index));
      if (role == TokenRole::OpenBracket) ++depth;
      if (role == TokenRole::CloseBracket && --depth == 0) break;
    }
    return index;
  }

  Pieces& pieces_;
  std::vector<std::size_t> tokens_;  // their pieces
  std::vector<Block> blocks_;
  std::size_t at_ = 0;
  std::size_t headerEnd_ = kNone;
  std::uint16_t level_ = 0;  // of the current line
  int depth_ = 0;            // of brackets in it
  bool lineEnds_ = true;     // before the current token
  bool declares_ = false;    // the current line is a declaration
  bool label_ = false;       // labels of a CASE are in the current line
  bool opening_ = false;     // a qualifier follows, as behind VAR
  Mark marked_ = Mark::None;
};

}  // namespace

void structure(Pieces& pieces) { Structure(pieces).run(); }

}  // namespace refhost::format
