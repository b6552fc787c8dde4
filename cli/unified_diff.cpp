#include "cli/unified_diff.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>

namespace velc {

namespace {

using Lines = std::vector<std::string_view>;

// Lines with their ends.
Lines linesOf(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
    lines.push_back(text.substr(0, size));
    text.remove_prefix(size);
  }
  return lines;
}

struct Change {
  std::size_t begin = 0;  // of the lines that go
  std::size_t end = 0;
  std::vector<std::string> lines;  // that come

  std::size_t added() const { return lines.size(); }
  std::size_t removed() const { return end - begin; }
};

class Diff {
 public:
  Diff(std::string_view text, const std::vector<refhost::LayoutEdit>& edits)
      : text_(text), lines_(linesOf(text)) {
    for (const std::string_view line : lines_) {
      starts_.push_back(static_cast<std::size_t>(line.data() - text.data()));
    }
    starts_.push_back(text.size());
    for (auto first = edits.begin(); first != edits.end();) {
      const std::size_t begin = lineAt(first->range.begin);
      std::size_t end = begin;
      auto last = first;
      for (; last != edits.end() && (last == first || lineAt(last->range.begin) < end); ++last) {
        end = std::max(end, std::min(lineAt(last->range.end) + 1, lines_.size()));
      }
      add(begin, end, {first, last});
      first = last;
    }
  }

  std::string text() const {
    std::string result;
    std::ptrdiff_t grown = 0;  // lines that earlier hunks add
    for (auto first = changes_.begin(); first != changes_.end();) {
      auto last = first + 1;
      while (last != changes_.end() && last->begin - (last - 1)->end <= 2 * kContext) ++last;
      grown = writeHunk(first, last, grown, result);
      first = last;
    }
    return result;
  }

 private:
  using Iterator = std::vector<Change>::const_iterator;
  static constexpr std::size_t kContext = 3;

  std::size_t lineAt(std::size_t offset) const {
    // The end of the text is a line of its own only behind the end of another one.
    const bool amid = !text_.empty() && text_.back() != '\n';
    const auto next = std::upper_bound(starts_.begin(), starts_.end() - (amid ? 1 : 0), offset);
    return static_cast<std::size_t>(next - starts_.begin() - 1);
  }

  void add(std::size_t begin, std::size_t end, std::vector<refhost::LayoutEdit> edits) {
    const auto start = static_cast<std::uint32_t>(starts_[begin]);
    for (refhost::LayoutEdit& edit : edits) {
      edit.range = {edit.range.begin - start, edit.range.end - start};
    }
    const std::string after = refhost::withEdits(text_.substr(start, starts_[end] - start), edits);
    Lines lines = linesOf(after);
    std::size_t same = 0;
    while (begin < end && same < lines.size() && lines_[begin] == lines[same]) ++begin, ++same;
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(same));
    while (begin < end && !lines.empty() && lines_[end - 1] == lines.back()) {
      --end;
      lines.pop_back();
    }
    if (begin == end && lines.empty()) return;
    // Changes of lines that follow each other are one.
    if (changes_.empty() || changes_.back().end != begin) changes_.push_back({begin, begin, {}});
    Change& change = changes_.back();
    change.end = end;
    change.lines.insert(change.lines.end(), lines.begin(), lines.end());
  }

  std::ptrdiff_t writeHunk(Iterator first, Iterator last, std::ptrdiff_t grown,
                           std::string& result) const {
    const std::size_t begin = first->begin - std::min(first->begin, kContext);
    const std::size_t end = std::min((last - 1)->end + kContext, lines_.size());
    std::ptrdiff_t growth = 0;
    std::string body;
    std::size_t at = begin;
    for (; first != last; ++first) {
      for (; at < first->begin; ++at) append(' ', lines_[at], body);
      for (; at < first->end; ++at) append('-', lines_[at], body);
      for (const std::string& line : first->lines) append('+', line, body);
      growth += static_cast<std::ptrdiff_t>(first->added()) -
                static_cast<std::ptrdiff_t>(first->removed());
    }
    for (; at < end; ++at) append(' ', lines_[at], body);
    const auto count = static_cast<std::ptrdiff_t>(end - begin);
    const auto range = [](std::ptrdiff_t from, std::ptrdiff_t size) {
      return fmt::format("{},{}", size == 0 ? from : from + 1, size);
    };
    const auto from = static_cast<std::ptrdiff_t>(begin);
    result +=
        fmt::format("@@ -{} +{} @@\n", range(from, count), range(from + grown, count + growth));
    result += body;
    return grown + growth;
  }

  static void append(char sign, std::string_view line, std::string& body) {
    body += sign;
    body += line;
    if (line.back() != '\n') body += "\n\\ No newline at end of file\n";
  }

  std::string_view text_;
  Lines lines_;
  std::vector<std::size_t> starts_;  // of the lines; the last one is the end of the text
  std::vector<Change> changes_;
};

}  // namespace

std::string unifiedDiff(const std::string& name, std::string_view text,
                        const std::vector<refhost::LayoutEdit>& edits) {
  return fmt::format("--- {0}\n+++ {0}\n{1}", name, Diff(text, edits).text());
}

}  // namespace velc
