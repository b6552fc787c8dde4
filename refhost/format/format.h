// The formatter: the one style in which Structured Text is written (docs/formatting.md).
//
// Only blanks, line breaks and the case of letters change, the latter in words of the language and
// in literals. Comments and pragmas keep their text but for blanks at the ends of lines and the
// indentation of the lines within. What is formatted stays as it is when it is formatted again.
#pragma once

#include <cstdint>
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
// overlap, and each of them leaves the tokens what they are, so that any of them may be applied
// without the others: those of a line, with what is broken out of it or joined to it, begin or end
// there.
std::vector<LayoutEdit> formattingEdits(std::string_view text);

std::string withEdits(std::string_view text, const std::vector<LayoutEdit>& edits);

// A source that is to be formatted. With errors of its syntax it stays as it is.
struct Formatting {
  std::vector<Diagnostic> errors;
  std::vector<LayoutEdit> edits;  // none if there are errors
};
Formatting formatSource(const SourceManager& sources, std::uint32_t file);

}  // namespace refhost
