#include "refhost/emit/static_texts.h"

namespace refhost {

namespace {

// The length of what stands at the start of `text` and is no C code: a comment, a literal, or a
// directive of the preprocessor, if `lineStart`; else 0.
std::size_t skipped(std::string_view text, bool lineStart) {
  const auto past = [text](std::string_view end, std::size_t from) {
    const std::size_t at = text.find(end, from);
    return at == std::string_view::npos ? text.size() : at + end.size();
  };
  if (text.substr(0, 2) == "/*") return past("*/", 2);
  if (text.substr(0, 2) == "//") return past("\n", 2);
  if (text[0] == '"' || text[0] == '\'') {
    std::size_t at = 1;
    while (at < text.size() && text[at] != text[0]) at += text[at] == '\\' ? 2 : 1;
    return at + 1;
  }
  if (text[0] != '#' || !lineStart) return 0;
  std::size_t end = past("\n", 0);
  while (end < text.size() && end >= 2) {
    const std::size_t last = text.find_last_not_of("\r\n", end - 1);
    if (last == std::string_view::npos || text[last] != '\\') break;
    end = past("\n", end);
  }
  return end;
}

bool defines(std::string_view head) {
  const auto has = [head](std::string_view word) { return head.find(word) != std::string::npos; };
  return has("(") && !head.empty() && head.back() == ')' && !has("static") && !has("inline") &&
         !has("extern") && !has("=");
}

}  // namespace

std::string internalPrototypes(std::string_view text) {
  std::string prototypes;
  std::string head;  // of what begins outside of braces
  int depth = 0;
  bool lineStart = true;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t skip = skipped(text.substr(at), lineStart);
    if (skip != 0) {
      at += skip;
      lineStart = at <= text.size() && text[at - 1] == '\n';
      continue;
    }
    const char c = text[at++];
    const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
    lineStart = c == '\n' || (blank && lineStart);
    if (c == '{' && depth++ == 0) {
      head.erase(head.find_last_not_of(' ') + 1);
      if (defines(head)) prototypes += "static " + head + " __attribute__((unused));\n";
    }
    if (depth == 0) {
      if (c == ';') {
        head.clear();
      } else if (!blank || !head.empty()) {
        head += blank ? ' ' : c;
      }
    }
    if (c == '}' && --depth == 0) head.clear();
  }
  return prototypes;
}

}  // namespace refhost
