// The tokens of one source, with lookahead.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>

#include "refhost/syntax/scanner.h"
#include "refhost/syntax/span.h"

namespace refhost {

struct Token {
  int kind = 0;
  Span span;
};

class TokenQueue {
 public:
  TokenQueue(std::string_view text, SyntaxErrors& errors) : text_(text), scanner_(text, errors) {}

  Token take();
  // The token `distance` places after the one taken last.
  const Token& ahead(std::size_t distance = 1);
  // Makes `token` the next one to be taken.
  void putBack(const Token& token) { ahead_.push_front(token); }

  std::string_view textOf(Span span) const {
    return text_.substr(span.begin, span.end - span.begin);
  }
  std::string_view textOf(const Token& token) const { return textOf(token.span); }
  // The source from `offset` on.
  std::string_view textFrom(std::uint32_t offset) const { return text_.substr(offset); }
  // True if `character` follows the span without a blank.
  bool isFollowedBy(Span span, char character) const {
    return span.end < text_.size() && text_[span.end] == character;
  }
  // The source behind the span and the blank that follows it, if any.
  std::string_view behind(Span span) const {
    std::size_t at = span.end;
    if (at < text_.size() && text_[at] == ' ') ++at;
    return text_.substr(at);
  }
  // True of a comma, dot, bracket or sign that continues an expression or a declaration.
  static bool isMark(char c) {
    switch (c) {
      case ':':
      case ',':
      case '.':
      case ')':
      case '^':
      case ']':
      case '=':
      case '<':
      case '>':
      case '+':
      case '-':
      case '*':
        return true;
      default:
        return false;
    }
  }
  // True of a '(' that begins no comment.
  static bool isBracket(std::string_view text) {
    return text.size() > 1 && text[0] == '(' && text[1] != '*';
  }
  bool isFollowedByMark(Span span) const {
    const std::string_view text = behind(span);
    return !text.empty() && isMark(text[0]);
  }
  bool isPrecededBy(Span span, char character) const {
    return span.begin > 0 && text_[span.begin - 1] == character;
  }
  // The last word before `offset`, with only blanks between them; empty for none.
  Span wordBefore(std::uint32_t offset) const;

 private:
  std::string_view text_;
  Scanner scanner_;
  std::deque<Token> ahead_;  // scanned, but not taken
};

}  // namespace refhost
