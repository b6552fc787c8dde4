// Formats STRING and WSTRING values as literals.
#pragma once

#include <string>
#include <string_view>

namespace velc {

// `bytes` is the memory of the value, which ends at the first zero or the end of the memory. The
// result is UTF-8, with `$` and the number for a character that is not printable.
std::string stringLiteral(std::string_view bytes);      // a STRING: bytes, UTF-8 by custom
std::string wideStringLiteral(std::string_view bytes);  // a WSTRING: UTF-16 code units

}  // namespace velc
