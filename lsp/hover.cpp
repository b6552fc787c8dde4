#include "refhost/editor/hover.h"

#include <fmt/format.h>

#include "cli/explanations.h"
#include "lsp/requests.h"

namespace lsp {

namespace {

std::string codeBlock(const std::string& text) { return "```st\n" + text + "\n```\n"; }

// In Markdown: the declaration, its comment, what is known of the value, and the page.
std::string textOf(const refhost::Hover& hover) {
  std::string text;
  if (!hover.declaration.empty()) text += codeBlock(hover.declaration);
  if (!hover.comment.empty()) text += "\n" + hover.comment + "\n";
  std::string facts;
  const auto add = [&facts](const char* name, const std::string& value) {
    if (!value.empty()) facts += fmt::format("- {}: `{}`\n", name, value);
  };
  add("type", hover.type);
  add("value", hover.value);
  add("address", hover.address);
  if (hover.bytes) facts += fmt::format("- {} bytes in C\n", *hover.bytes);
  if (!facts.empty()) text += "\n" + facts;
  for (const velc::Explanation* page : velc::explanationsOf(hover.topic)) {
    text += (text.empty() ? "" : "\n---\n\n") + std::string(page->text);
  }
  return text;
}

Json hover(const Analysed& analysed, const Json& params) {
  const auto found = refhost::hoverAt(analysed.session().view(), placeIn(analysed, params));
  if (!found) return nullptr;
  const std::string text = textOf(*found);
  if (text.empty()) return nullptr;
  return {{"contents", {{"kind", "markdown"}, {"value", text}}},
          {"range", analysed.range(found->range)}};
}

}  // namespace

void addHover(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  capabilities["hoverProvider"] = true;
  onDocument(rpc, workspace, "textDocument/hover", hover);
}

}  // namespace lsp
