// The literals of STRING and WSTRING values.
#pragma once

#include <string>
#include <string_view>

namespace velc {

// `bytes` are the value's memory; it ends at the first zero, or with the memory.
// The result is UTF-8; what does not print stands as `$` and its number.
std::string stringLiteral(std::string_view bytes);      // a STRING: bytes, UTF-8 by custom
std::string wideStringLiteral(std::string_view bytes);  // a WSTRING: UTF-16 code units

}  // namespace velc
