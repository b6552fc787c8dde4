// Text functions of the host's library.
#pragma once

#include <string>
#include <vector>

#include "host/export.h"

// Splits at every character of `separators`; empty parts are kept. The host's own: the plugin
// does not call it.
VEL_HOST_API std::vector<std::string> stringSplit(const std::string& text,
                                                  const std::string& separators);
// `a` to `z` become `A` to `Z`; every other byte stays.
VEL_HOST_API std::string stringToUpper(const std::string& text);

namespace vel {
using ::stringSplit;
using ::stringToUpper;
}  // namespace vel
