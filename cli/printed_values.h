// The values of variables when a program has run.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/places.h"

namespace velc {

enum class ValuesForm : std::uint8_t {
  Text,  // lines `name = value`
  Json,  // one object
};

// `bytes` are the values of `printed` as the driver writes them. Throws Failure when they are not
// complete.
std::string printedValues(ValuesForm form, const Places& places,
                          const std::vector<refhost::ProgramVariable>& printed,
                          std::string_view bytes);

}  // namespace velc
