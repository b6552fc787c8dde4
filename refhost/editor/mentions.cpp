#include "refhost/editor/mentions.h"

#include <vector>

#include "refhost/editor/source_tokens.h"

namespace refhost {

namespace {

using vel::equalIgnoringCase;

bool isNamed(std::string_view word, SourceToken::Kind kind, std::string_view name) {
  if (kind == SourceToken::Kind::Name) return equalIgnoringCase(word, name);
  if (kind != SourceToken::Kind::TypedName) return false;
  const std::size_t mark = word.find('#');
  return equalIgnoringCase(word.substr(0, mark), name) ||
         equalIgnoringCase(word.substr(mark + 1), name);
}

// Passes the token in front of each place of the name, and the one behind it; empty for none.
template <typename Judge>
bool anyPlace(std::string_view text, std::string_view name, Judge judge) {
  const std::vector<SourceToken> tokens = sourceTokens(text);
  const auto isCode = [&tokens](std::size_t i) {
    return tokens[i].kind != SourceToken::Kind::Comment &&
           tokens[i].kind != SourceToken::Kind::Pragma;
  };
  const auto word = [&](std::size_t i) {
    const Span span = tokens[i].span;
    return text.substr(span.begin, span.end - span.begin);
  };
  std::string_view before;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (!isCode(i)) continue;
    if (isNamed(word(i), tokens[i].kind, name)) {
      std::size_t next = i + 1;
      while (next < tokens.size() && !isCode(next)) ++next;
      if (judge(before, next < tokens.size() ? word(next) : std::string_view())) return true;
    }
    before = word(i);
  }
  return false;
}

}  // namespace

bool hasName(std::string_view text, std::string_view name) {
  return anyPlace(text, name, [](std::string_view, std::string_view) { return true; });
}

bool canName(std::string_view text, SymbolKind kind, std::string_view name) {
  const bool ofUnit = isVariable(kind) && kind != SymbolKind::Global;
  const bool named = isParameter(kind) || kind == SymbolKind::Member;
  if (!ofUnit && !named) return hasName(text, name);
  return anyPlace(text, name, [named](std::string_view before, std::string_view behind) {
    if (before == ".") return true;
    const bool begins = before == "(" || before == ",";
    return named && begins && (behind == ":=" || behind == "=>" || behind == "=");
  });
}

}  // namespace refhost
