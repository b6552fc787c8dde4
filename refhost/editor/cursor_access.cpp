// The access and the call that end at the cursor.
#include "refhost/editor/cursor_context.h"
#include "refhost/syntax/word_tables.h"

namespace refhost {

namespace {

using AccessToken = grammar::Parser::token;

}  // namespace

std::size_t CursorContext::accessBegin(std::size_t last) const {
  const std::vector<SourceToken>& tokens = code.tokens;
  const std::size_t begin = last >= code.statement ? code.statement : 0;
  std::size_t i = last + 1;
  while (i > begin) {
    std::size_t part = i - 1;
    const int kind = tokens[part].token;
    if (kind == ']') {
      int depth = 0;
      for (;; --part) {
        if (tokens[part].token == ']') ++depth;
        if (tokens[part].token == '[' && --depth == 0) break;
        if (part == 0 || isStructural(tokens[part].token)) return last + 1;
      }
      i = part;
    } else if (kind == '^') {
      i = part;
    } else {
      const bool name = kind == AccessToken::IDENTIFIER || kind == AccessToken::LITERAL ||
                        (part > 0 && tokens[part - 1].token == '.' &&
                         tokens[part].kind == SourceToken::Kind::Keyword);
      if (!name) return last + 1;
      if (part <= begin || tokens[part - 1].token != '.') return part;
      i = part - 1;
    }
  }
  return last + 1;
}

const CodeBracket* CursorContext::call() const {
  for (auto bracket = code.brackets.rbegin(); bracket != code.brackets.rend(); ++bracket) {
    if (code.tokens[bracket->token].token != '(' || bracket->token == 0) continue;
    const SourceToken& before = code.tokens[bracket->token - 1];
    if (before.token == AccessToken::IDENTIFIER || before.token == ']' || before.token == '^') {
      return &*bracket;
    }
    // An operator between operands has one in front of it.
    const bool binary = bracket->token >= 2 && endsOperand(code.tokens[bracket->token - 2]);
    for (const Keyword& operation : words::kOperators) {
      if (operation.kind == before.token && !binary) return &*bracket;
    }
  }
  return nullptr;
}

}  // namespace refhost
