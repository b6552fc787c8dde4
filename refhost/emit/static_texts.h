#pragma once

#include <string>
#include <string_view>

namespace refhost {

// Prototypes that make the functions which the static text of an operator defines internal to the
// C file, so that several files of one program can contain the text. Those that are `static` or
// `inline` need none.
std::string internalPrototypes(std::string_view text);

}  // namespace refhost
