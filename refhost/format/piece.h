// A source as the formatter sees it: tokens and comments, and how they are to be laid out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "refhost/syntax/span.h"

namespace refhost::format {

// Kinds of pieces that are no tokens.
enum Other : int {
  kComment = -1,      // between brackets of any form, or a pragma
  kLineComment = -2,  // up to the end of its line
  kVerbatim = -3,     // a construct that the parser skips
};

enum class Break : std::uint8_t {
  None,
  Within,  // in the midst of a line of the structure, which goes on
  Line,    // a declaration, a statement or a part of one begins
};

// Parts of a declaration that stand in columns.
enum class Mark : std::uint8_t { None, Address, Colon, Value };

struct Piece {
  bool isToken() const { return kind >= 0; }
  bool begins() const { return before != Break::None; }
  bool opens() const { return kind == '(' || kind == '['; }
  bool closes() const { return kind == ')' || kind == ']'; }
  // The column behind it if it is written at the column `at`.
  std::uint32_t columnBehind(std::uint32_t at) const {
    if (!severalLines) return at + width;
    return moves && begins() ? width - column + at : width;
  }

  int kind = 0;  // of the token, or Other
  Span span;
  // In the source.
  std::uint32_t newlines = 0;  // line breaks between the piece and the one before it
  std::uint32_t column = 0;    // from 0; a tab leads to the next multiple of four
  std::uint32_t width = 0;     // in characters; of several lines, that of the last one
  bool severalLines = false;   // a comment
  // Its lines are indented by the bytes that precede it in its own line, and move with it.
  bool moves = false;
  bool pinned = false;  // stays in one line with the piece before it
  bool parted = false;  // does not get into the line of the piece before it

  // What the structure says.
  Break before = Break::None;
  std::uint16_t level = 0;         // of indentation, for Break::Line
  std::uint16_t commentLevel = 0;  // the same for comments in lines of their own before it
  // For comments that stood further to the right than the piece.
  std::uint16_t outerCommentLevel = 0;
  Mark mark = Mark::None;
  bool declares = false;  // the first token of a declaration
  bool unit = false;      // the first token of a unit or a block outside of units
  bool label = false;     // the ':' behind the labels of a CASE

  // How it is written.
  bool blank = false;      // behind a blank, unless it begins a line
  bool binary = false;     // an operator between two operands
  bool upper = false;      // in capitals
  bool trailing = false;   // a comment at the end of a line of code
  bool below = false;      // a comment in its own line, right below a trailing one
  bool continues = false;  // the same, and in its column
  bool whole = false;      // no line break is put in front of it
  std::uint32_t pad = 0;   // further blanks, which align it

  // The result.
  std::uint32_t outNewlines = 0;
  std::uint32_t outBlanks = 0;
};

// The last piece is the end of the text.
using Pieces = std::vector<Piece>;

// The pieces of a text in which the parser finds no errors.
Pieces piecesOf(std::string_view text);

// Each of these steps needs those before it.
void structure(Pieces& pieces);                     // lines and their levels
void space(Pieces& pieces, std::string_view text);  // blanks and capitals
void breakLines(Pieces& pieces);                    // line breaks that stay
void alignDeclarations(Pieces& pieces);             // columns
void layOut(Pieces& pieces);                        // indentation and long lines
// The lines that are formatted if those of the range are, without the end of the last one.
Span linesWith(const Pieces& pieces, std::string_view text, Span range);
// A part of layOut(): columns within a line of the structure, which is broken already.
void alignArguments(Pieces& pieces, std::size_t begin, std::size_t end);

inline constexpr std::string_view kLineEnds = "\r\n";
inline constexpr std::uint32_t kIndentation = 2;
inline constexpr std::uint32_t kMaxWidth = 100;
// What is wider neither moves a column nor is aligned.
inline constexpr std::uint32_t kMaxCell = 32;

}  // namespace refhost::format
