// Reads values as valueText() writes them.
#pragma once

#include <optional>
#include <string>

#include "refhost/value_shape.h"

namespace velc {

// The memory of an elementary value or an enumeration in the generated program. Empty if `text` is
// no literal, or none that `shape` can hold.
std::optional<std::string> valueBytes(const refhost::ValueShape& shape, const std::string& text);

}  // namespace velc
