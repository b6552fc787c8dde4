#include "lsp/documentation.h"

#include <fmt/format.h>

#include "cli/explanations.h"
#include "lsp/links.h"

namespace lsp {

namespace {

std::string codeBlock(const std::string& text) { return "```st\n" + text + "\n```\n"; }

// Within more backticks than the text has in a row.
std::string codeSpan(const std::string& text) {
  std::string fence = "`";
  while (text.find(fence) != std::string::npos) fence += '`';
  return fence.size() == 1 ? fence + text + fence : fence + ' ' + text + ' ' + fence;
}

}  // namespace

std::string pageOf(std::string_view topic) {
  std::string text;
  for (const velc::Explanation* const page : velc::explanationsOf(topic)) {
    text += (text.empty() ? "" : "\n---\n\n") + withoutRelativeLinks(page->text);
  }
  return text;
}

std::string summaryOf(std::string_view topic) {
  const std::string page = pageOf(topic);
  std::size_t begin = page.find("\n\n");
  if (begin == std::string::npos) return {};
  begin += 2;
  return page.substr(begin, page.find("\n\n", begin) - begin);
}

std::string documentationOf(const refhost::Hover& hover) {
  std::string text;
  if (!hover.declaration.empty()) text += codeBlock(hover.declaration);
  if (!hover.comment.empty()) text += "\n" + hover.comment + "\n";
  std::string facts;
  const auto add = [&facts](const char* name, const std::string& value) {
    if (!value.empty()) facts += fmt::format("- {}: {}\n", name, codeSpan(value));
  };
  add("type", hover.type);
  add("value", hover.value);
  add("address", hover.address);
  if (hover.bytes)
    facts += fmt::format("- {} byte{} in C\n", *hover.bytes, *hover.bytes == 1 ? "" : "s");
  if (!facts.empty()) text += "\n" + facts;
  const std::string page = pageOf(hover.topic);
  if (!page.empty()) text += (text.empty() ? "" : "\n---\n\n") + page;
  return text;
}

}  // namespace lsp
