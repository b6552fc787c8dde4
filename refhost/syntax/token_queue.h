// The tokens of one source, of which some are looked at before their turn.
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
  // The token `distance` after the one that was taken last.
  const Token& ahead(std::size_t distance = 1);
  // The token that is taken next.
  void putBack(const Token& token) { ahead_.push_front(token); }

  std::string_view textOf(Span span) const {
    return text_.substr(span.begin, span.end - span.begin);
  }
  std::string_view textOf(const Token& token) const { return textOf(token.span); }
  // Whether `text` stands behind the span, without a blank.
  bool isFollowedBy(Span span, char character) const {
    return span.end < text_.size() && text_[span.end] == character;
  }
  bool isPrecededBy(Span span, char character) const {
    return span.begin > 0 && text_[span.begin - 1] == character;
  }
  // The word that ends before `offset`, blanks between them left out; empty for none.
  Span wordBefore(std::uint32_t offset) const;

 private:
  std::string_view text_;
  Scanner scanner_;
  std::deque<Token> ahead_;  // scanned before their turn
};

}  // namespace refhost
