#include "refhost/editor/semantic_tokens.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "lsp/requests.h"

namespace lsp {

namespace {

// By SemanticToken::Kind. TRUE and FALSE are the values of a type, as those of enumerations are.
constexpr std::array<std::string_view, 13> kTypes = {
    "keyword",    "type",       "function", "class",  "variable", "parameter", "property",
    "enumMember", "enumMember", "number",   "string", "comment",  "operator"};
// In the order of the bits.
constexpr std::array<std::string_view, 3> kModifiers = {"declaration", "readonly",
                                                        "defaultLibrary"};

Json tokens(const Analysed& analysed, const Json& /*params*/) {
  Json data = Json::array();
  Position last;
  for (const refhost::SemanticToken& token :
       refhost::semanticTokensOf(analysed.session().view(), analysed.file())) {
    const vel::TextLocation begin = token.range.begin;
    const Position at = analysed.position(begin);
    const Position end =
        analysed.position(vel::TextLocation(begin.file(), begin.offset() + token.range.length));
    const bool sameLine = at.line == last.line;
    const std::string_view name = kTypes.at(static_cast<std::size_t>(token.kind));
    // The first one of this name.
    const auto type = std::find(kTypes.begin(), kTypes.end(), name) - kTypes.begin();
    data.insert(data.end(), {at.line - last.line, at.character - (sameLine ? last.character : 0),
                             end.character - at.character, type, token.modifiers});
    last = at;
  }
  return {{"data", std::move(data)}};
}

}  // namespace

void addSemanticTokens(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  capabilities["semanticTokensProvider"] = {
      {"legend", {{"tokenTypes", kTypes}, {"tokenModifiers", kModifiers}}}, {"full", true}};
  onDocument(rpc, workspace, "textDocument/semanticTokens/full", tokens);
}

}  // namespace lsp
