// Source lines in messages, with the part that a message is about underlined.
#pragma once

#include <string>

#include "cli/colours.h"
#include "refhost/diagnostic.h"
#include "refhost/syntax/source.h"

namespace velc {

// Replaces control characters by blanks, so that the text is one line and contains no commands to a
// terminal.
std::string printable(std::string_view text);

// The line, or the first characters of a long one and `...`.
std::string shortened(const std::string& line);

// A text of the user in quotes, printable and shortened.
std::string inQuotes(std::string_view text);

// The first source line of the range, and below it `^~~~` up to the end of the range or of the
// line; each ends in a newline. A long line is shortened to the characters around the range's
// begin.
std::string excerpt(const refhost::SourceManager& sources, const refhost::SourceRange& range,
                    const Colours& colours);

// `text` as valid UTF-8; in other texts each byte is taken for a character of Latin-1.
std::string asUtf8(const std::string& text);

}  // namespace velc
