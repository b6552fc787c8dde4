// Formats STRING and WSTRING values.
#pragma once

#include <string>
#include <string_view>

#include "host/basic_data_type.h"

namespace refhost {

// `bytes` is the memory of the value, which ends at the first zero or the end of the memory. The
// result is UTF-8, with `$` and the number for a character that is not printable.
std::string stringLiteral(std::string_view bytes);      // a STRING: bytes, UTF-8 by custom
std::string wideStringLiteral(std::string_view bytes);  // a WSTRING: UTF-16 code units

// The characters of a STRING or WSTRING. Half of a surrogate pair becomes U+FFFD.
std::string plainText(vel::BasicDataType type, std::string_view bytes);

}  // namespace refhost
