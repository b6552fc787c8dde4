// Reads the pieces of a text.
#include <algorithm>

#include "grammar.h"
#include "hostkit/encoding.h"
#include "refhost/diagnostics.h"
#include "refhost/format/piece.h"
#include "refhost/syntax/syntax_errors.h"
#include "refhost/syntax/token_stream.h"

namespace refhost::format {

namespace {

using Kind = grammar::Parser::token;

constexpr std::uint32_t kTab = 4;

// True if all lines behind the first begin with `blanks`.
bool isIndented(std::string_view text, std::string_view blanks) {
  for (;;) {
    const std::size_t end = text.find_first_of(kLineEnds);
    if (end == std::string::npos) return true;
    text.remove_prefix(end + 1);
    const std::string_view line = text.substr(0, text.find_first_of(kLineEnds));
    if (line.find_first_not_of(kBlanks) == std::string::npos) continue;
    if (line.substr(0, blanks.size()) != blanks) return false;
  }
}

// The width of blanks within a piece.
std::uint32_t indentation(std::string_view blanks) {
  std::uint32_t width = 0;
  for (const char c : blanks) width += c == '\t' ? kTab : 1;
  return width;
}

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text), utf8_(hostkit::isUtf8(text)) {}

  Pieces read() {
    Diagnostics silent;
    SyntaxErrors errors(text_, 0, silent);
    TokenStream tokens(text_, errors);
    int kind = 0;
    do {
      Span span;
      kind = tokens.next(span);
      readGap(span.begin);
      append(kind, span.end);
    } while (kind != Kind::YYEOF);
    pin(silent.silentParts());
    return std::move(pieces_);
  }

 private:
  // The blanks, comments and pragmas up to a token, and what the parser skips with them.
  void readGap(std::uint32_t end) {
    std::uint32_t skipped = 0;  // the end of what the parser skips
    const std::uint32_t begin = at_;
    std::uint32_t look = begin;
    while (look < end) {
      if (isBlank(text_[look])) {
        ++look;
      } else if (const std::uint32_t behind = commentEnd(look, end); behind != 0) {
        look = behind;
      } else {
        skipped = ++look;
      }
    }
    while (at_ < end) {
      const char c = text_[at_];
      if (isBlank(c)) {
        advance(true);
        continue;
      }
      const std::uint32_t behind = commentEnd(at_, end);
      const bool line = behind != 0 && text_.substr(at_, 2) == "//";
      if (behind == 0) {
        append(kVerbatim, std::max(skipped, at_ + 1));
      } else {
        append(line ? kLineComment : kComment, behind);
      }
    }
  }

  static bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
  }

  // The end of the comment or pragma at `begin`; 0 for none.
  std::uint32_t commentEnd(std::uint32_t begin, std::uint32_t end) const {
    const std::string_view rest = text_.substr(begin, end - begin);
    std::size_t size = 0;
    if (rest.substr(0, 2) == "//") {
      size = std::min(rest.find_first_of(kLineEnds), rest.size());
      size = rest.find_last_not_of(kBlanks, size - 1) + 1;
    } else if (rest.substr(0, 2) == "/*") {
      const std::size_t close = rest.find("*/", 2);
      size = close == std::string::npos ? rest.size() : close + 2;
    } else if (rest.substr(0, 2) == "(*") {
      size = nestedEnd(rest);
    } else if (rest[0] == '{') {
      size = pragmaEnd(rest);
    }
    return size == 0 ? 0 : begin + static_cast<std::uint32_t>(size);
  }

  static std::size_t nestedEnd(std::string_view text) {
    int depth = 0;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
      const std::string_view two = text.substr(i, 2);
      if (two == "(*") {
        ++depth;
        ++i;
      } else if (two == "*)") {
        ++i;
        if (--depth == 0) return i + 1;
      }
    }
    return text.size();
  }

  // A string within may contain brackets.
  static std::size_t pragmaEnd(std::string_view text) {
    constexpr std::string_view kBeforeString = " \t(,=";
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '{') ++depth;
      if (text[i] == '}' && --depth == 0) return i + 1;
      if (text[i] != '\'' || kBeforeString.find(text[i - 1]) == std::string_view::npos) continue;
      const std::size_t close = text.find_first_of("'\r\n", i + 1);
      if (close != std::string::npos && text[close] == '\'') i = close;
    }
    return text.size();
  }

  // Within a piece tabs count alike wherever it stands.
  void advance(bool inGap) {
    const char c = text_[at_];
    const bool second = c == '\n' && at_ > 0 && text_[at_ - 1] == '\r';
    if ((c == '\n' || c == '\r') && !second) ++newlines_;
    if (c == '\n' || c == '\r') {
      column_ = 0;
      line_ = at_ + 1;
    } else if (c == '\t') {
      column_ += inGap ? kTab - column_ % kTab : kTab;
    } else if (!utf8_ || (static_cast<unsigned char>(c) & 0xC0) != 0x80) {
      ++column_;
    }
    ++at_;
  }

  void append(int kind, std::uint32_t end) {
    Piece piece;
    piece.kind = kind;
    piece.span = {at_, end};
    piece.newlines = newlines_;
    piece.column = column_;
    const std::uint32_t begin = column_;
    newlines_ = 0;
    const std::string_view before = text_.substr(line_, at_ - line_);
    while (at_ < end) advance(false);
    piece.severalLines = newlines_ > 0;
    piece.width = column_ - (piece.severalLines ? 0 : begin);
    if (piece.severalLines && before.find_first_not_of(kBlanks) == std::string::npos) {
      piece.moves = isIndented(text_.substr(piece.span.begin, end - piece.span.begin), before);
      if (piece.moves) piece.width = piece.width + begin - indentation(before);
    }
    newlines_ = 0;
    pieces_.push_back(piece);
  }

  // A pragma that silences warnings in a line holds for the same tokens afterwards.
  void pin(const std::vector<SilentPart>& parts) {
    const auto from = [this](std::uint32_t offset) {
      return std::lower_bound(
          pieces_.begin(), pieces_.end(), offset,
          [](const Piece& piece, std::uint32_t at) { return piece.span.begin < at; });
    };
    Span pinned;  // last
    for (const SilentPart& part : parts) {
      if (part.end == pinned.end && part.begin >= pinned.begin) continue;
      if (text_.substr(part.begin, part.end - part.begin).find_first_of(kLineEnds) !=
          std::string::npos)
        continue;
      pinned = {part.begin, part.end};
      const auto first = from(part.begin);
      const auto last = from(part.end);
      if (first == last) continue;
      first->parted = first->newlines > 0;
      for (auto piece = first + 1; piece != last; ++piece) piece->pinned = true;
      if (last != pieces_.end()) last->parted = last->newlines > 0;
    }
  }

  std::string_view text_;
  bool utf8_;
  Pieces pieces_;
  std::uint32_t at_ = 0;
  std::uint32_t newlines_ = 0;  // since the last piece
  std::uint32_t line_ = 0;      // the begin of the current line
  std::uint32_t column_ = 0;
};

}  // namespace

Pieces piecesOf(std::string_view text) { return Reader(text).read(); }

}  // namespace refhost::format
