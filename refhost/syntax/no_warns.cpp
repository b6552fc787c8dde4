#include "refhost/syntax/no_warns.h"

#include <algorithm>
#include <utility>

#include "grammar.h"
#include "hostkit/folding.h"
#include "refhost/syntax/constructs.h"
#include "refhost/syntax/source.h"
#include "refhost/syntax/syntax_errors.h"
#include "refhost/warnings.h"

namespace refhost {

namespace {

constexpr std::string_view kSeparators = " \t\r\n,";

// The next word of `text` from `at` on; empty at the end.
Span wordFrom(std::string_view text, std::uint32_t at, std::uint32_t end) {
  while (at < end && kSeparators.find(text[at]) != std::string_view::npos) ++at;
  Span word{at, at};
  while (word.end < end && kSeparators.find(text[word.end]) == std::string_view::npos) ++word.end;
  return word;
}

}  // namespace

void NoWarns::pragma(Span whole) {
  const Span inner{whole.begin + 1, whole.end - 1};
  const Span word = wordFrom(text_, inner.begin, inner.end);
  if (!equalIgnoringCase(text_.substr(word.begin, word.end - word.begin), "nowarn")) return;
  std::vector<unsigned int> warnings = warningsIn({word.end, inner.end});
  if (isBehindCode(whole.begin)) {
    errors_.silence(line_, std::move(warnings));
  } else {
    waiting_.push_back({std::move(warnings)});
    waits_ = true;
  }
}

// Without a name, a pragma stands for all warnings.
std::vector<unsigned int> NoWarns::warningsIn(Span words) {
  std::vector<unsigned int> warnings;
  Span word = wordFrom(text_, words.begin, words.end);
  if (word.begin == word.end) warnings.push_back(kEveryWarning);
  for (; word.begin != word.end; word = wordFrom(text_, word.end, words.end)) {
    const std::string_view name = text_.substr(word.begin, word.end - word.begin);
    const std::vector<unsigned int> named = warningsNamed(name);
    if (named.empty()) errors_.warn(word, message::kUnknownWarning, name);
    warnings.insert(warnings.end(), named.begin(), named.end());
  }
  return warnings;
}

void NoWarns::token(int kind, Span span) {
  const auto settled = [&](Waiting& pragma) { return settles(pragma, kind, span); };
  waiting_.erase(std::remove_if(waiting_.begin(), waiting_.end(), settled), waiting_.end());
  waits_ = !waiting_.empty();
}

bool NoWarns::settles(Waiting& pragma, int kind, Span span) {
  const bool last = kind == grammar::Parser::token::YYEOF;
  if (pragma.closer == 0) {
    pragma.begin = span.begin;
    if (opensUnit(kind) || opensVariables(kind)) {
      pragma.closer = constructOf(kind)->closer;
      return false;
    }
    enterLine(span.begin);
    errors_.silence({span.begin, line_.end}, std::move(pragma.warnings));
    return true;
  }
  if (kind != pragma.closer && !last) return false;
  errors_.silence({pragma.begin, span.end}, std::move(pragma.warnings));
  return true;
}

// True if the line has more in front of `offset` than blanks, comments and pragmas.
bool NoWarns::isBehindCode(std::uint32_t offset) {
  enterLine(offset);
  for (;;) {
    std::string_view rest = text_.substr(bare_, offset - bare_);
    const std::size_t blanks = std::min(rest.find_first_not_of(kBlanks), rest.size());
    rest.remove_prefix(blanks);
    bare_ += static_cast<std::uint32_t>(blanks);
    if (rest.empty()) return false;
    std::size_t end = std::string_view::npos;
    if (rest.substr(0, 2) == "(*") end = rest.find("*)", 2);
    if (rest.substr(0, 2) == "/*") end = rest.find("*/", 2);
    if (rest[0] == '{') end = rest.find('}');
    if (end == std::string_view::npos) return true;
    bare_ += static_cast<std::uint32_t>(end + (rest[0] == '{' ? 1 : 2));
  }
}

// Each offset is at least as large as the one before.
void NoWarns::enterLine(std::uint32_t offset) {
  if (offset < line_.end) return;
  const std::string_view between = text_.substr(line_.end, offset - line_.end);
  const std::size_t last = between.find_last_of(kLineEnds);
  if (last != std::string::npos) {
    line_.begin = bare_ = line_.end + static_cast<std::uint32_t>(last + 1);
  }
  line_.end =
      static_cast<std::uint32_t>(std::min(text_.find_first_of(kLineEnds, offset), text_.size()));
}

}  // namespace refhost
