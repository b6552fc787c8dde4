#include "lsp/text.h"

#include <algorithm>

#include "hostkit/encoding.h"

namespace lsp {

namespace {

// The length in bytes of the character at the begin of `text`, which is not empty.
std::size_t sizeOfCharacter(std::string_view text) {
  std::string_view rest = text;
  hostkit::takeCharacter(rest);
  return text.size() - rest.size();
}

// UTF-16 has two units for the characters that have four bytes in UTF-8.
std::uint32_t unitsOf(std::size_t size, Encoding encoding) {
  if (encoding == Encoding::Utf8) return static_cast<std::uint32_t>(size);
  return size == 4 ? 2 : 1;
}

}  // namespace

Lines::Lines(std::string_view text, Encoding encoding, std::string_view mark)
    : text_(text),
      encoding_(encoding),
      markWidth_(mark.empty() ? 0 : unitsOf(mark.size(), encoding)) {
  starts_.push_back(0);
  for (std::size_t end = text.find_first_of("\r\n"); end != std::string_view::npos;
       end = text.find_first_of("\r\n", end + 1)) {
    if (text.compare(end, 2, "\r\n") == 0) ++end;
    starts_.push_back(end + 1);
  }
}

Position Lines::position(std::size_t offset) const {
  offset = std::min(offset, text_.size());
  const auto next = std::upper_bound(starts_.begin(), starts_.end(), offset);
  const std::size_t start = *(next - 1);
  Position position{static_cast<std::uint32_t>(next - starts_.begin() - 1), 0};
  if (position.line == 0) position.character = markWidth_;
  if (encoding_ == Encoding::Utf8) {
    position.character += static_cast<std::uint32_t>(offset - start);
    return position;
  }
  for (std::size_t at = start; at < offset;) {
    const std::size_t size = sizeOfCharacter(text_.substr(at));
    at += size;
    if (at <= offset) position.character += unitsOf(size, encoding_);
  }
  return position;
}

std::size_t Lines::lineEnd(std::size_t line) const {
  if (line + 1 == starts_.size()) return text_.size();
  std::size_t end = starts_[line + 1];
  while (end > starts_[line] && (text_[end - 1] == '\n' || text_[end - 1] == '\r')) --end;
  return end;
}

std::size_t Lines::offset(Position position) const {
  if (position.line >= starts_.size()) return text_.size();
  const std::size_t end = lineEnd(position.line);
  std::size_t at = starts_[position.line];
  std::uint32_t left = position.character;
  if (position.line == 0) left -= std::min(left, markWidth_);
  while (at < end) {
    const std::size_t size = sizeOfCharacter(text_.substr(at));
    const std::uint32_t units = unitsOf(size, encoding_);
    if (units > left) break;
    left -= units;
    at += size;
  }
  return at;
}

}  // namespace lsp
