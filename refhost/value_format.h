// Formats values of variables for users, in the syntax that `--set` accepts.
#pragma once

#include <string>
#include <string_view>

#include "host/basic_data_type.h"

namespace refhost {

// A value of an elementary type or a pointer. `bytes` is the value in the memory of the generated
// program. `typeName` distinguishes a BYTE from a USINT.
std::string valueText(vel::BasicDataType type, std::string_view typeName, std::string_view bytes);

}  // namespace refhost
