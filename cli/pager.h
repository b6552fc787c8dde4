// Long texts on a terminal.
#pragma once

#include <string_view>

namespace velc {

// Writes the text to standard output; if that is a terminal, through the command in the environment
// variable PAGER or, without one, through less, which shows it page by page if it does not fit on
// one. Throws Failure when it cannot be written.
void writePaged(std::string_view text);

}  // namespace velc
