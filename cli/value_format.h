// Values of variables as the user reads them, in the forms that `--set` takes.
#pragma once

#include <string>
#include <string_view>

#include "host/basic_data_type.h"

namespace velc {

// The value of an elementary type or a pointer; `bytes` are the value as it lies in the memory of
// the generated program. `typeName` tells a BYTE from a USINT.
std::string valueText(vel::BasicDataType type, std::string_view typeName, std::string_view bytes);

}  // namespace velc
