#include "refhost/emit/line_directives.h"

#include <fmt/format.h>

#include <algorithm>

namespace refhost {

namespace {

// A string literal. Other bytes than printable ASCII would depend on the compiler's character set,
// and a '?' may begin a trigraph.
std::string quoted(std::string_view name) {
  std::string text = "\"";
  for (const char character : name) {
    if (character < ' ' || character > '~') {
      text += fmt::format("\\{:03o}", static_cast<unsigned char>(character));
      continue;
    }
    if (character == '"' || character == '\\' || character == '?') text += '\\';
    text += character;
  }
  return text + '"';
}

}  // namespace

std::string lineDirective(std::uint32_t line) { return fmt::format("#line {}\n", line); }

std::string lineDirective(std::uint32_t line, std::string_view file) {
  return fmt::format("#line {} {}\n", line, quoted(file));
}

std::string withOwnLines(const std::string& text, std::string_view name) {
  const std::string_view mark = kToOwnLines;
  const std::string file = name.empty() ? "__BASE_FILE__" : quoted(name);
  std::string out;
  out.reserve(text.size() + text.size() / 16);
  std::size_t line = 1;  // of `begin` in the result
  for (std::size_t begin = 0;;) {
    std::size_t end = text.find(mark, begin);
    while (end != std::string::npos && end != 0 && text[end - 1] != '\n') {
      end = text.find(mark, end + 1);
    }
    const auto kept = std::string_view(text).substr(begin, end - begin);
    out += kept;
    if (end == std::string::npos) return out;
    line += static_cast<std::size_t>(std::count(kept.begin(), kept.end(), '\n'));
    begin = end + mark.size();
    // Another file follows at once.
    if (text.compare(begin, 7, "\n#line ") == 0) continue;
    out += fmt::format("#line {} {}\n", ++line, file);
  }
}

}  // namespace refhost
