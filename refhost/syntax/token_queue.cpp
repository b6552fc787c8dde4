#include "refhost/syntax/token_queue.h"

#include <cctype>

namespace refhost {

Token TokenQueue::take() {
  Token token;
  if (ahead_.empty()) {
    token.kind = scanner_.next(token.span);
  } else {
    token = ahead_.front();
    ahead_.pop_front();
  }
  return token;
}

const Token& TokenQueue::ahead(std::size_t distance) {
  while (ahead_.size() < distance) {
    Token token;
    token.kind = scanner_.next(token.span);
    ahead_.push_back(token);
  }
  return ahead_[distance - 1];
}

Span TokenQueue::wordBefore(std::uint32_t offset) const {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  const auto isWord = [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
  };
  while (offset > 0 && isBlank(text_[offset - 1])) --offset;
  std::uint32_t begin = offset;
  while (begin > 0 && isWord(text_[begin - 1])) --begin;
  return {begin, offset};
}

}  // namespace refhost
