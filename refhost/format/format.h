// The formatter: the one style in which Structured Text is written (docs/formatting.md).
//
// Only blanks, line breaks and the case of letters change, the latter in words of the language and
// in literals. Comments and pragmas keep their text but for blanks at the ends of lines and the
// indentation of the lines within. What is formatted stays as it is when it is formatted again.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "refhost/diagnostic.h"
#include "refhost/syntax/source.h"
#include "refhost/syntax/span.h"

namespace refhost {

// A change of a source: the text that takes the place of a range of bytes.
struct LayoutEdit {
  Span range;
  std::string text;
};

// The changes that format a text in which parse() finds no error, from first to last. They do not
// overlap.
std::vector<LayoutEdit> formattingEdits(std::string_view text);

// Those that format the lines in which the range begins, ends and which it contains: what is broken
// out of them or joined to them, and lines that must be formatted together with them, as all of a
// comment. Formatting the same lines again changes nothing.
std::vector<LayoutEdit> formattingEdits(std::string_view text, Span range);

std::string withEdits(std::string_view text, const std::vector<LayoutEdit>& edits);

// A source that is to be formatted. With errors of its syntax it stays as it is.
struct Formatting {
  std::vector<Diagnostic> errors;
  std::vector<LayoutEdit> edits;  // none if there are errors
};
// All of it, or the lines of a range.
Formatting formatSource(const SourceManager& sources, std::uint32_t file,
                        std::optional<Span> range = std::nullopt);

}  // namespace refhost
