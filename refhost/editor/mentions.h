// Whether a text can name a symbol that another file declares, told by its tokens: for texts with
// syntax errors, and to pass over files quickly.
#pragma once

#include <string_view>

#include "refhost/editor/symbols.h"

namespace refhost {

// False if no token of the text is the name where a symbol of this kind could be meant: behind a
// '.' those of a unit, in front of ':=' or '=>' parameters and members.
bool canName(std::string_view text, SymbolKind kind, std::string_view name);
// True if the name is there, as that of whatever.
bool hasName(std::string_view text, std::string_view name);

}  // namespace refhost
