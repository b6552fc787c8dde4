// Where a text that is missing in a source belongs.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "refhost/syntax/constructs.h"
#include "refhost/syntax/span.h"

namespace refhost {

struct Insertion {
  std::uint32_t offset;
  std::string text;
};

// The line break of the line around `offset`.
std::string_view lineBreakAt(std::string_view text, std::uint32_t offset);
// The blanks with which the line around `offset` begins.
std::string_view indentationAt(std::string_view text, std::uint32_t offset);
// The end of the last token in the line around `offset`, where no comment is open when it begins.
std::uint32_t endOfCode(std::string_view text, std::uint32_t offset);
// True if nothing stands before `offset` in its line.
bool beginsLine(std::string_view text, std::uint32_t offset);

// The END_x of the block whose opener is at `opener`. It was missed at the token at offset `found`,
// before which the last one ends at `end`. Where the lines of the block are indented, it stands
// behind the last of them, otherwise behind the last token.
Insertion closerInsertion(std::string_view text, const Construct& construct, Span opener,
                          std::uint32_t end, std::uint32_t found);

// `line` on a line of its own behind the one that contains `end`, the end of a token; in the same
// line if `found`, where the next token begins, is in it.
Insertion lineInsertion(std::string_view text, std::string_view line, std::uint32_t end,
                        std::uint32_t found);

}  // namespace refhost
