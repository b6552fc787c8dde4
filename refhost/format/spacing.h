// The words and literals of the language in the one spelling.
#pragma once

#include <string>
#include <string_view>

#include "refhost/format/piece.h"

namespace refhost::format {

// The text of a token as it is written. It is as long as that of the source.
std::string spelled(const Piece& token, std::string_view text);

// How strongly the operator holds its operands together: 1 for OR, more for those that bind more
// tightly; 0 for all other tokens.
int bindingOf(const Piece& token);

}  // namespace refhost::format
