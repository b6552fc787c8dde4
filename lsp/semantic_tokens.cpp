#include "refhost/editor/semantic_tokens.h"

#include <algorithm>
#include <array>
#include <limits>
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

// Those in the range that `params` name, or all.
Json tokens(const Analysed& analysed, const Json& params) {
  std::uint32_t first = 0;
  std::uint32_t last = std::numeric_limits<std::uint32_t>::max();
  if (const auto range = params.find("range"); range != params.end()) {
    first = analysed.offset(positionFrom(range->at("start")));
    last = analysed.offset(positionFrom(range->at("end")));
  }
  Json data = Json::array();
  Position before;
  for (const refhost::SemanticToken& token :
       refhost::semanticTokensOf(analysed.session().view(), analysed.file())) {
    const vel::TextLocation begin = token.range.begin;
    if (begin.offset() + token.range.length <= first || begin.offset() >= last) continue;
    const Position at = analysed.position(begin);
    const Position end =
        analysed.position(vel::TextLocation(begin.file(), begin.offset() + token.range.length));
    const bool sameLine = at.line == before.line;
    const std::string_view name = kTypes.at(static_cast<std::size_t>(token.kind));
    // The first one of this name.
    const auto type = std::find(kTypes.begin(), kTypes.end(), name) - kTypes.begin();
    data.insert(data.end(),
                {at.line - before.line, at.character - (sameLine ? before.character : 0),
                 end.character - at.character, type, token.modifiers});
    before = at;
  }
  return {{"data", std::move(data)}};
}

}  // namespace

void addSemanticTokens(Rpc& rpc, Workspace& workspace, Json& capabilities) {
  capabilities["semanticTokensProvider"] = {
      {"legend", {{"tokenTypes", kTypes}, {"tokenModifiers", kModifiers}}},
      {"full", true},
      {"range", true}};
  onDocument(rpc, workspace, "textDocument/semanticTokens/full", tokens);
  onDocument(rpc, workspace, "textDocument/semanticTokens/range", tokens);
}

}  // namespace lsp
