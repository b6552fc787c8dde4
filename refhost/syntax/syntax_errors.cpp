#include "refhost/syntax/syntax_errors.h"

#include <algorithm>
#include <string>

#include "refhost/syntax/parser.h"
#include "refhost/syntax/source.h"

namespace refhost {

namespace {

constexpr std::size_t kShownLength = 60;

// Source text as a message shows it: valid UTF-8 without control characters,
// whatever the file holds.
std::string printable(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::size_t length = utf8Length(text);
    const bool shown = length > 1 || (length == 1 && text[0] >= ' ' && text[0] != 0x7F);
    if (shown) {
      out.append(text.substr(0, length));
    } else {
      out += '?';
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return out;
}

// No more of a token than a message has room for.
std::string shortened(std::string_view token) {
  std::string_view shown = token.substr(0, kShownLength);
  while (shown.size() < token.size() && !shown.empty() &&
         (static_cast<unsigned char>(token[shown.size()]) & 0xC0U) == 0x80U) {
    shown.remove_suffix(1);
  }
  return std::string(shown).append(shown.size() < token.size() ? "..." : "");
}

}  // namespace

SyntaxErrors::SyntaxErrors(std::string_view text, std::uint32_t file,
                           std::vector<vel::VELMessage>& messages)
    : text_(text), file_(file), messages_(messages) {}

void SyntaxErrors::add(Span at, const MessageFormat& format, std::string_view argument) {
  if (exhausted()) return;
  report(messages_, vel::TextLocation(file_, at.begin), format, {printable(argument)});
  if (++count_ == kMaxErrors) {
    report(messages_, vel::TextLocation(file_, at.begin), message::kTooManyErrors, {});
  }
}

void SyntaxErrors::syntax(Span at, std::string_view what) {
  if (at.begin < nextOffset_) return;
  nextOffset_ = at.begin + 1;
  add(at, message::kSyntax, what);
}

void SyntaxErrors::unexpected(Span found, std::string_view expected) {
  if (found.begin < nextOffset_) return;
  std::string what = "found ";
  what.append(found.begin >= text_.size()
                  ? "end of file"
                  : "'" + shortened(text_.substr(found.begin, found.end - found.begin)) + "'");
  if (!expected.empty()) what.append(", expected ").append(expected);
  syntax(found, what);
}

void SyntaxErrors::notSupported(Span at, std::string_view construct) {
  if (at.begin < nextOffset_) return;
  nextOffset_ = at.begin + 1;
  add(at, message::kNotSupported, construct);
}

void SyntaxErrors::tooDeep(Span at) {
  if (tooDeepSaid_) return;
  tooDeepSaid_ = true;
  add(at, message::kNestingTooDeep, std::to_string(kMaxNesting));
}

void SyntaxErrors::muteUntil(std::uint32_t offset) { nextOffset_ = std::max(nextOffset_, offset); }

}  // namespace refhost
