#include "refhost/syntax/syntax_errors.h"

#include <algorithm>
#include <optional>
#include <string>

#include "hostkit/encoding.h"
#include "hostkit/folding.h"
#include "refhost/syntax/parser.h"
#include "refhost/syntax/source.h"

namespace refhost {

namespace {

constexpr std::size_t kShownLength = 60;

// Source text for a message: valid UTF-8 without control characters, whatever the file's encoding.
std::string printable(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::optional<char32_t> c = hostkit::takeCharacter(text);
    const bool isShown = c >= U' ' && c != U'\x7F';
    hostkit::appendUtf8(isShown ? *c : U'?', out);
  }
  return out;
}

// At most kShownLength bytes of a token, cut between characters.
std::string shortened(std::string_view token) {
  std::string_view rest = token;
  std::size_t shown = 0;
  while (!rest.empty()) {
    hostkit::takeCharacter(rest);
    if (token.size() - rest.size() > kShownLength) return std::string(token, 0, shown) + "...";
    shown = token.size() - rest.size();
  }
  return std::string(token);
}

}  // namespace

SyntaxErrors::SyntaxErrors(std::string_view text, std::uint32_t file, Diagnostics& messages)
    : text_(text), file_(file), messages_(messages) {}

Remarks* SyntaxErrors::add(Span at, const MessageFormat& format, std::string_view argument) {
  if (exhausted()) return nullptr;
  reportedInUnit_ = reportedInUnit_ || format.severity == Severity::Error;
  Remarks& remarks = messages_.report(rangeOf(at), format, {printable(argument)});
  if (++count_ < kMaxErrors) return &remarks;
  messages_.report(rangeOf({at.begin, at.begin}), message::kTooManyErrors, {});
  return nullptr;
}

Remarks* SyntaxErrors::syntax(Span at, std::string_view what) {
  if (at.begin < nextOffset_) return nullptr;
  nextOffset_ = at.begin + 1;
  return add(at, message::kSyntax, what);
}

SourceRange SyntaxErrors::rangeOf(Span span) const {
  const std::uint32_t end = std::min(span.end, static_cast<std::uint32_t>(text_.size()));
  return {vel::TextLocation(file_, span.begin), std::max(end, span.begin) - span.begin};
}

Remarks* SyntaxErrors::unexpected(Span found, std::string_view expected) {
  if (found.begin < nextOffset_) return nullptr;
  std::string what = "found ";
  what.append(found.begin >= text_.size()
                  ? "end of file"
                  : "'" + shortened(text_.substr(found.begin, found.end - found.begin)) + "'");
  if (!expected.empty()) what.append(", expected ").append(expected);
  return syntax(found, what);
}

void SyntaxErrors::propose(Remarks& said, Span words, std::string_view keyword) const {
  const SourceRange range = rangeOf(words);
  const std::string text(keyword);
  said.note(range, "did you mean '" + text + "'?").fix(range, text);
}

void SyntaxErrors::insert(Remarks& said, std::string_view word, Insertion insertion) const {
  const SourceRange place = rangeOf({insertion.offset, insertion.offset});
  const std::string shown =
      isLetter(word.front()) ? std::string(word) : "'" + std::string(word) + "'";
  said.fix({"Add " + shown, {{place, std::move(insertion.text)}}});
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

void SyntaxErrors::muteDeclaration(std::uint32_t offset) {
  const std::size_t end = text_.find_first_of(";\r\n", offset);
  muteUntil(static_cast<std::uint32_t>(std::min(end, text_.size() - 1)) + 1);
}

void SyntaxErrors::muteUntil(std::uint32_t offset) { nextOffset_ = std::max(nextOffset_, offset); }

}  // namespace refhost
