#include "cli/excerpt.h"

#include <utf8proc.h>

#include <algorithm>
#include <string_view>

#include "hostkit/encoding.h"

namespace velc {

namespace {

// Characters that are shown of a long line before and behind the begin of a range.
constexpr std::size_t kAround = 70;
constexpr std::string_view kCut = "...";

// What a terminal shows as one character: a letter with its accents, a joined emoji.
struct Cluster {
  std::string_view text;
  std::size_t width;  // in columns; at most 2
};

int columnsOf(char32_t character) {
  return std::max(utf8proc_charwidth(static_cast<utf8proc_int32_t>(character)), 0);
}

// Removes the first cluster from `text`, which must not be empty. An invalid byte is one column.
Cluster takeCluster(std::string_view& text) {
  const std::string_view whole = text;
  std::optional<char32_t> last = hostkit::takeCharacter(text);
  int width = last ? columnsOf(*last) : 1;
  utf8proc_int32_t state = 0;
  while (last && !text.empty()) {
    std::string_view rest = text;
    const std::optional<char32_t> next = hostkit::takeCharacter(rest);
    if (!next || utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(*last),
                                                  static_cast<utf8proc_int32_t>(*next), &state)) {
      break;
    }
    width += columnsOf(*next);
    last = next;
    text = rest;
  }
  return {whole.substr(0, whole.size() - text.size()),
          static_cast<std::size_t>(std::min(width, 2))};
}

// Keeps tabs, whose width varies.
std::string underline(std::string_view line, std::size_t begin, std::size_t end) {
  std::string marks;
  for (std::string_view rest = line; !rest.empty();) {
    const Cluster cluster = takeCluster(rest);
    const std::size_t after = line.size() - rest.size();
    const bool first = marks.find('^') == std::string::npos;
    if (!first && after - cluster.text.size() >= end) return marks;
    if (cluster.text == "\t") {
      marks += '\t';
    } else if (after <= begin) {
      marks.append(cluster.width, ' ');
    } else {
      marks.append(cluster.width, '~');
      if (first && cluster.width > 0) marks[marks.size() - cluster.width] = '^';
    }
  }
  return marks.find('^') == std::string::npos ? marks + '^' : marks;
}

// The size of the last `count` characters of `text`.
std::size_t sizeOfLast(std::size_t count, std::string_view text) {
  std::size_t characters = 0;
  for (std::string_view rest = text; !rest.empty(); hostkit::takeCharacter(rest)) ++characters;
  return text.size() - hostkit::sizeOfFirst(characters > count ? characters - count : 0, text);
}

}  // namespace

std::string printable(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte < 0x20 && c != '\t') || byte == 0x7F) c = ' ';
  }
  return result;
}

std::string shortened(const std::string& line) {
  const std::size_t size = hostkit::sizeOfFirst(2 * kAround, line);
  return size < line.size() ? line.substr(0, size).append(kCut) : line;
}

std::string inQuotes(std::string_view text) { return '\'' + shortened(printable(text)) + '\''; }

std::string excerpt(const refhost::SourceManager& sources, const refhost::SourceRange& range,
                    const Colours& colours) {
  const std::string line = printable(sources.line(range.begin));
  const std::size_t begin = std::min<std::size_t>(sources.offsetInLine(range.begin), line.size());
  const std::string_view head = std::string_view(line).substr(0, begin);
  const std::string_view tail = std::string_view(line).substr(begin);
  const std::size_t before = sizeOfLast(kAround, head);
  const std::size_t behind = hostkit::sizeOfFirst(kAround, tail);
  const std::string_view lead = before < head.size() ? kCut : "";
  std::string shown(lead);
  shown.append(line, begin - before, before + behind);
  const std::size_t start = lead.size() + before;
  const std::string marks = underline(shown, start, start + std::max<std::size_t>(range.length, 1));
  if (behind < tail.size()) shown += kCut;
  const std::size_t caret = marks.find('^');
  return shown + '\n' + marks.substr(0, caret) + colours(Colours::Role::Mark, marks.substr(caret)) +
         '\n';
}

std::string asUtf8(const std::string& text) {
  std::string result;
  std::string_view rest = text;
  while (!rest.empty()) {
    const char first = rest.front();
    std::string_view character = rest;
    if (hostkit::takeCharacter(rest)) {
      character.remove_suffix(rest.size());
      result.append(character);
    } else {
      hostkit::appendUtf8(static_cast<unsigned char>(first), result);
    }
  }
  return result;
}

}  // namespace velc
