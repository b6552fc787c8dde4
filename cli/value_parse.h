// Reads values as valueText() writes them, and as a program may write them.
#pragma once

#include <string>

#include "refhost/value_shape.h"

namespace velc {

// Sets `bytes` to the memory of an elementary value or an enumeration in the generated program.
// Returns false, and says why in `error`, if `text` is no literal, or none that `shape` can hold.
bool parseValue(const refhost::ValueShape& shape, const std::string& text, std::string& bytes,
                std::string& error);

}  // namespace velc
