#include "refhost/format/format.h"

#include <algorithm>

#include "refhost/diagnostics.h"
#include "refhost/format/piece.h"
#include "refhost/format/spacing.h"
#include "refhost/syntax/parser.h"
#include "refhost/syntax/tree.h"

namespace refhost {

namespace format {
namespace {

// The line end of a text: that of its first line.
std::string_view lineEndOf(std::string_view text) {
  const std::size_t first = text.find_first_of(kLineEnds);
  if (first == std::string::npos || text[first] == '\n') return "\n";
  return text.substr(first, 2) == "\r\n" ? "\r\n" : "\r";
}

class Writer {
 public:
  Writer(std::string_view text, const Pieces& pieces)
      : text_(text), lineEnd_(lineEndOf(text)), pieces_(pieces) {}

  std::vector<LayoutEdit> edits() {
    std::uint32_t end = 0;  // of the piece before
    for (const Piece& piece : pieces_) {
      changeGap({end, piece.span.begin}, piece);
      const std::string_view text = textOf(piece.span);
      change(piece.span, piece.isToken() ? spelled(piece, text) : commentText(piece, text));
      end = piece.span.end;
    }
    return std::move(edits_);
  }

 private:
  std::string_view textOf(Span span) const {
    return text_.substr(span.begin, span.end - span.begin);
  }

  // What ends a line, the blank lines, and what indents the next one change apart from each other,
  // so that each line can be changed alone.
  void changeGap(Span gap, const Piece& piece) {
    const std::string_view source = textOf(gap);
    const std::size_t first = source.find_first_of(kLineEnds);
    const std::string blanks(piece.outBlanks, ' ');
    std::string lines;
    for (std::uint32_t i = 0; i < piece.outNewlines; ++i) lines += lineEnd_;
    if (first == std::string::npos || lines.empty()) return change(gap, lines + blanks);
    const Span ends{gap.begin + static_cast<std::uint32_t>(first),
                    gap.begin + static_cast<std::uint32_t>(source.find_last_of(kLineEnds) + 1)};
    change({gap.begin, ends.begin}, "");
    change(ends, lines);
    change({ends.end, gap.end}, blanks);
  }

  void change(Span range, std::string text) {
    if (textOf(range) != text) edits_.push_back({range, std::move(text)});
  }

  // The lines within a comment move with the first one if they are indented as it is.
  std::string commentText(const Piece& comment, std::string_view text) const {
    if (text.find_first_of(kLineEnds) == std::string::npos) return std::string(text);
    const bool moves = comment.moves && comment.begins();
    const std::string_view head = text_.substr(0, moves ? comment.span.begin : 0);
    const std::size_t margin = head.size() - (head.find_last_of(kLineEnds) + 1);
    std::string result;
    for (bool first = true; !text.empty(); first = false) {
      std::string_view line = text.substr(0, text.find_first_of(kLineEnds));
      text.remove_prefix(line.size());
      const std::size_t end =
          text.substr(0, 2) == "\r\n" ? 2 : std::min<std::size_t>(text.size(), 1);
      text.remove_prefix(end);
      line = line.substr(0, line.find_last_not_of(kBlanks) + 1);
      if (!first) {
        result += lineEnd_;
        if (moves && !line.empty()) {
          line.remove_prefix(margin);
          result.append(comment.outBlanks, ' ');
        }
      }
      result += line;
    }
    return result;
  }

  std::string_view text_;
  std::string_view lineEnd_;
  const Pieces& pieces_;
  std::vector<LayoutEdit> edits_;
};

Pieces laidOut(std::string_view text) {
  Pieces pieces = piecesOf(text);
  structure(pieces);
  space(pieces, text);
  breakLines(pieces);
  alignDeclarations(pieces);
  layOut(pieces);
  return pieces;
}

}  // namespace
}  // namespace format

std::vector<LayoutEdit> formattingEdits(std::string_view text) {
  const format::Pieces pieces = format::laidOut(text);
  return format::Writer(text, pieces).edits();
}

std::vector<LayoutEdit> formattingEdits(std::string_view text, Span range) {
  const format::Pieces pieces = format::laidOut(text);
  const Span lines = format::linesWith(pieces, text, range);
  std::vector<LayoutEdit> edits = format::Writer(text, pieces).edits();
  const auto elsewhere = [&lines](const LayoutEdit& edit) {
    return edit.range.end < lines.begin || edit.range.begin > lines.end;
  };
  edits.erase(std::remove_if(edits.begin(), edits.end(), elsewhere), edits.end());
  return edits;
}

std::string withEdits(std::string_view text, const std::vector<LayoutEdit>& edits) {
  std::string result;
  result.reserve(text.size() + text.size() / 8);
  std::uint32_t at = 0;
  for (const LayoutEdit& edit : edits) {
    result.append(text, at, edit.range.begin - at);
    result += edit.text;
    at = edit.range.end;
  }
  result.append(text, at);
  return result;
}

Formatting formatSource(const SourceManager& sources, std::uint32_t file,
                        std::optional<Span> range) {
  Formatting result;
  Tree tree;
  Diagnostics messages;
  parse(sources, file, tree, messages);
  for (Diagnostic& message : messages.inOrder(0)) {
    if (message.severity == Severity::Error) result.errors.push_back(std::move(message));
  }
  if (!result.errors.empty()) return result;
  const std::string_view text = sources.text(file);
  result.edits = range ? formattingEdits(text, *range) : formattingEdits(text);
  return result;
}

}  // namespace refhost
