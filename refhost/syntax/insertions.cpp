#include "refhost/syntax/insertions.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "hostkit/folding.h"
#include "refhost/kit.h"

namespace refhost {

namespace {

std::uint32_t lineBeginAt(std::string_view text, std::uint32_t offset) {
  const std::size_t before = offset > 0 ? text.find_last_of('\n', offset - 1) : std::string::npos;
  return before == std::string::npos ? 0 : static_cast<std::uint32_t>(before) + 1;
}

// Of the line around `offset`, without its line break.
std::uint32_t lineEndAt(std::string_view text, std::uint32_t offset) {
  return static_cast<std::uint32_t>(std::min(text.find_first_of("\r\n", offset), text.size()));
}

std::size_t indentationWidth(std::string_view indentation) {
  constexpr std::size_t kTab = 4;
  const auto tabs = std::count(indentation.begin(), indentation.end(), '\t');
  return indentation.size() + static_cast<std::size_t>(tabs) * (kTab - 1);
}

// The end of what is neither blank nor comment from `at` to `end`, the bounds of a line; `at` if
// there is no more. `depth` is the number of comments that are open.
std::uint32_t codeEnd(std::string_view text, std::uint32_t at, std::uint32_t end, int& depth) {
  std::uint32_t code = at;
  char quote = 0;
  for (; at < end; ++at) {
    const std::string_view two = text.substr(at, 2);
    const bool quotes = depth == 0 && (text[at] == '\'' || text[at] == '"');
    if (quote != 0 && text[at] == '$') {
      ++at;
    } else if (quote == 0 && (two == "(*" || two == "/*")) {
      ++depth;
      ++at;
    } else if (depth > 0) {
      if (two != "*)" && two != "*/") continue;
      --depth;
      ++at;
    } else if (quote == 0 && two == "//") {
      break;
    } else if (quote == 0 && text[at] == '{') {
      const std::size_t close = text.find('}', at);
      if (close >= end) break;  // a pragma goes on in the next line
      at = static_cast<std::uint32_t>(close);
      code = at + 1;
    } else if (kBlanks.find(text[at]) == std::string::npos) {
      code = at + 1;
      if (quotes && (quote == 0 || quote == text[at])) quote = quote == 0 ? text[at] : '\0';
    }
  }
  return code;
}

// The lines of a text that contain more than comments.
class CodeLines {
 public:
  struct Line {
    std::uint32_t begin;     // behind the indentation
    std::uint32_t end;       // without the line break
    std::size_t width;       // of the indentation
    std::string_view first;  // its first word; empty if it begins with anything else
    std::string_view code;   // from `begin` to `end`
    bool open;               // a comment goes on in the next line
  };

  // From the line behind the one around `offset` on.
  CodeLines(std::string_view text, std::uint32_t offset)
      : text_(text), at_(lineEndAt(text, offset)) {
    codeEnd(text, offset, at_, depth_);
  }

  std::optional<Line> next() {
    while (at_ < text_.size()) {
      const std::size_t begin = text_.find('\n', at_);
      if (begin == std::string::npos) break;
      Line line{};
      line.begin = static_cast<std::uint32_t>(begin) + 1;
      at_ = line.end = lineEndAt(text_, line.begin);
      const bool inside = depth_ > 0;
      const bool code = codeEnd(text_, line.begin, line.end, depth_) > line.begin;
      line.open = depth_ > 0;
      if (inside || !code) continue;
      const std::string_view indentation = indentationAt(text_, line.begin);
      line.width = indentationWidth(indentation);
      line.begin += static_cast<std::uint32_t>(indentation.size());
      line.code = text_.substr(line.begin, line.end - line.begin);
      std::size_t size = 0;
      while (size < line.code.size() && isWordPart(line.code[size])) ++size;
      line.first = line.code.substr(0, size);
      return line;
    }
    return {};
  }

 private:
  static bool isWordPart(char c) { return isLetter(c) || c == '_' || (c >= '0' && c <= '9'); }

  std::string_view text_;
  std::uint32_t at_;
  int depth_ = 0;  // of comments
};

// True of a line that continuesBlock the block at whose indentation it stands.
bool continuesBlock(const CodeLines::Line& line, const Construct& construct) {
  const auto begins = [&line](std::string_view word) {
    return equalIgnoringCase(line.first, word);
  };
  const std::string_view opener = construct.openerName();
  if (opener == "IF") return begins("ELSIF") || begins("ELSE") || begins("THEN");
  if (opener == "REPEAT") return begins("UNTIL");
  if (opener != "CASE") return begins("DO");
  const std::size_t colon = line.code.find(':');
  const bool label = colon != std::string::npos && line.code.substr(colon, 2) != ":=";
  return label || begins("ELSE") || begins("OF");
}

struct Opened {
  std::uint32_t opener;
  std::size_t width;  // of its indentation
};

}  // namespace

std::string_view lineBreakAt(std::string_view text, std::uint32_t offset) {
  std::size_t end = text.find('\n', offset);
  if (end == std::string::npos) end = text.find('\n');
  return end != std::string::npos && end > 0 && text[end - 1] == '\r' ? "\r\n" : "\n";
}

std::string_view indentationAt(std::string_view text, std::uint32_t offset) {
  const std::string_view line = text.substr(lineBeginAt(text, offset));
  return line.substr(0, std::min(line.find_first_not_of(kBlanks), line.size()));
}

std::uint32_t endOfCode(std::string_view text, std::uint32_t offset) {
  int depth = 0;
  return codeEnd(text, lineBeginAt(text, offset), lineEndAt(text, offset), depth);
}

bool beginsLine(std::string_view text, std::uint32_t offset) {
  const std::uint32_t begin = lineBeginAt(text, offset);
  const std::string_view before = text.substr(begin, offset - begin);
  return before.find_first_not_of(kBlanks) == std::string::npos;
}

Insertion lineInsertion(std::string_view text, std::string_view line, std::uint32_t end,
                        std::uint32_t found) {
  const std::uint32_t lineEnd = lineEndAt(text, end);
  int depth = 0;
  const std::uint32_t code = codeEnd(text, end, lineEnd, depth);
  // A comment or a pragma goes on in the next line, or a pragma belongs to what stands before it.
  const bool comment = depth > 0 ||
                       text.substr(code, lineEnd - code).find('{') != std::string::npos ||
                       text.substr(end, code - end).find('{') != std::string::npos;
  const std::string lineBreak(lineBreakAt(text, end));
  if (lineEnd <= found && !comment) return {lineEnd, lineBreak + std::string(line)};
  if (lineEnd < found && beginsLine(text, found)) {
    return {lineBeginAt(text, found), std::string(line) + lineBreak};
  }
  const std::size_t begin = std::min(line.find_first_not_of(kBlanks), line.size());
  std::string inserted = " " + std::string(line.substr(begin));
  if (end < text.size() && found == end) inserted += ' ';
  return {end, std::move(inserted)};
}

Insertion closerInsertion(std::string_view text, const Construct& construct, Span opener,
                          std::uint32_t end, std::uint32_t found) {
  const auto closer = [&](std::uint32_t begin) {
    return std::string(indentationAt(text, begin)).append(construct.closerName);
  };
  // Blocks of the construct that the lines have begun and not ended: the outer one first.
  std::vector<Opened> blocks{{opener.begin, indentationWidth(indentationAt(text, opener.begin))}};
  CodeLines lines(text, opener.begin);
  std::optional<CodeLines::Line> before;
  const bool indented = beginsLine(text, opener.begin);
  for (auto line = lines.next(); indented && line && line->begin < found; line = lines.next()) {
    const Opened block = blocks.back();
    const bool ends = line->width < block.width ||
                      (line->width == block.width && !continuesBlock(*line, construct));
    if (ends && !before) break;  // the lines are not indented
    const bool closes = equalIgnoringCase(line->first, construct.closerName);
    if (ends && closes && line->width == block.width && blocks.size() > 1) {
      blocks.pop_back();
    } else if (ends) {
      if (!before->open) return lineInsertion(text, closer(block.opener), before->end, line->begin);
      return {lineBeginAt(text, line->begin),
              closer(block.opener).append(lineBreakAt(text, line->begin))};
    } else if (equalIgnoringCase(line->first, construct.openerName()) &&
               line->code.find(construct.closerName) == std::string::npos) {
      blocks.push_back({line->begin, line->width});
    }
    before = line;
  }
  return lineInsertion(text, closer(opener.begin), end, found);
}

}  // namespace refhost
