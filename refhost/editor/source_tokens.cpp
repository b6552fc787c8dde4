#include "refhost/editor/source_tokens.h"

#include <algorithm>

#include "grammar.h"
#include "hostkit/folding.h"
#include "refhost/diagnostics.h"
#include "refhost/syntax/scanner.h"
#include "refhost/syntax/syntax_errors.h"

namespace refhost {

namespace {

using SourceKind = SourceToken::Kind;
using Token = grammar::Parser::token;

constexpr std::size_t kNowhere = std::string_view::npos;

// The end of the comment or pragma that begins at `at`; `at` itself if none does.
std::size_t endOfTrivia(std::string_view text, std::size_t at) {
  const auto starts = [&](std::size_t where, std::string_view mark) {
    return text.compare(where, mark.size(), mark) == 0;
  };
  if (starts(at, "//")) return std::min(text.find_first_of("\r\n", at), text.size());
  if (starts(at, "/*")) {
    const std::size_t end = text.find("*/", at + 2);
    return end == kNowhere ? text.size() : end + 2;
  }
  const bool pragma = text[at] == '{';
  if (!pragma && !starts(at, "(*")) return at;
  const std::string_view opens = pragma ? "{" : "(*";
  const std::string_view closes = pragma ? "}" : "*)";
  std::size_t depth = 0;
  for (std::size_t i = at; i < text.size();) {
    if (starts(i, opens)) {
      ++depth;
      i += opens.size();
    } else if (starts(i, closes)) {
      i += closes.size();
      if (--depth == 0) return i;
    } else if (pragma && text[i] == '\'' &&
               std::string_view(" \t(,=").find(text[i - 1]) != kNowhere) {
      const std::size_t end = text.find_first_of("'\r\n", i + 1);
      i = end != kNowhere && text[end] == '\'' ? end + 1 : i + 1;
    } else {
      ++i;
    }
  }
  return text.size();
}

SourceKind sourceKindOf(int token, std::string_view text) {
  switch (token) {
    case Token::IDENTIFIER:
      return SourceKind::Name;
    case Token::INTEGER:
    case Token::NUMBER:
      return SourceKind::Number;
    case Token::DIRECT_ADDRESS:
      return SourceKind::Address;
    case Token::YYerror:
      return text.find_first_of("'\"") != kNowhere ? SourceKind::String : SourceKind::Error;
    case Token::LITERAL:
      break;
    default:
      return hostkit::isLetter(text[0]) ? SourceKind::Keyword : SourceKind::Mark;
  }
  if (text.back() == '\'' || text.back() == '"') return SourceKind::String;
  const std::size_t mark = text.find('#');
  if (mark == kNowhere) return SourceKind::Truth;
  const bool name =
      mark + 1 < text.size() && (hostkit::isLetter(text[mark + 1]) || text[mark + 1] == '_');
  return name ? SourceKind::TypedName : SourceKind::Number;
}

}  // namespace

std::vector<SourceToken> sourceTokens(std::string_view text) {
  std::vector<SourceToken> tokens;
  Diagnostics ignored;
  SyntaxErrors errors(text, 0, ignored);
  Scanner scanner(text, errors);
  std::size_t at = 0;  // the end of what has been taken
  for (bool more = true; more;) {
    Span span;
    const int token = scanner.next(span);
    more = token != Token::YYEOF;
    // The scanner skips comments and pragmas.
    const std::size_t begin = more ? span.begin : text.size();
    while (at < begin) {
      const std::size_t end = endOfTrivia(text, at);
      if (end != at) {
        const SourceKind kind = text[at] == '{' ? SourceKind::Pragma : SourceKind::Comment;
        tokens.push_back(
            {kind, 0, {static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(end)}});
      }
      at = std::max(end, at + 1);
    }
    if (!more || span.begin < at || span.end <= span.begin) continue;
    at = span.end;
    tokens.push_back(
        {sourceKindOf(token, text.substr(span.begin, span.end - span.begin)), token, span});
  }
  return tokens;
}

}  // namespace refhost
