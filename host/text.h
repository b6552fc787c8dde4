// String functions of the host's library.
#pragma once

#include <string>
#include <vector>

#include "host/export.h"

// Splits at every character of `separators` and keeps empty parts. For the host: the plugin does
// not call it.
VEL_HOST_API std::vector<std::string> stringSplit(const std::string& text,
                                                  const std::string& separators);
// Replaces `a` to `z` by `A` to `Z` and keeps every other byte.
VEL_HOST_API std::string stringToUpper(const std::string& text);

namespace vel {
using ::stringSplit;
using ::stringToUpper;
}  // namespace vel
